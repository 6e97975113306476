// SPDX-License-Identifier: MIT
#include "tests/desktop/virtual_compositor.h"

#include <signal.h>

#include <QFile>
#include <QTest>
#include <filesystem>

#include "tests/kit/temporary_folder.h"

namespace desktop_tests {
namespace {

constexpr int patience = 60000;  // ms

constexpr const char* configuration =
    "[core]\nidle-time=0\n"
    "[shell]\npanel-position=none\nlocking=false\nbackground-color=0xff2060a0\n";

}  // namespace

VirtualCompositor::~VirtualCompositor() {
    if (!_server || _server->hasEnded()) return;
    _server->signal(SIGTERM);
    _server->wait();
}

bool VirtualCompositor::isInstalled() {
    return std::filesystem::exists(TEST_WESTON);
}

bool VirtualCompositor::startOn(const VirtualDisplay& display, const std::string& runtimeFolder, QSize size) {
    kit::Environment environment = kit::ownEnvironment();
    environment["DISPLAY"] = display.name().toStdString();
    return start("x11", std::move(environment), runtimeFolder, size);
}

bool VirtualCompositor::startWithoutSeat(const std::string& runtimeFolder) {
    return start("headless", kit::ownEnvironment(), runtimeFolder);
}

bool VirtualCompositor::start(const std::string& backend, kit::Environment environment,
                              const std::string& runtimeFolder, QSize size) {
    const std::string configurationFile = runtimeFolder + "/weston.ini";
    kit::writeText(configurationFile, configuration);
    environment["XDG_RUNTIME_DIR"] = runtimeFolder;
    environment.erase("WAYLAND_DISPLAY");
    const std::string quiet = runtimeFolder + "/weston.log";
    std::vector<std::string> command{TEST_WESTON,
                                     "--backend=" + backend + "-backend.so",
                                     std::string("--socket=") + name,
                                     "--config=" + configurationFile,
                                     "--log=" + quiet,
                                     "--width=" + std::to_string(size.width()),
                                     "--height=" + std::to_string(size.height())};
    if (backend == "x11") command.emplace_back("--use-pixman");
    _server.emplace(command, environment);
    const std::string socket = runtimeFolder + '/' + name;
    return QTest::qWaitFor([&] { return std::filesystem::exists(socket) || _server->hasEnded(); }, patience) &&
           !_server->hasEnded();
}

}  // namespace desktop_tests
