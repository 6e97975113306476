// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/waiting_window.h"

#include <unistd.h>

#include <QGuiApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "hosts/desktop/program/display_opening.h"
#include "hosts/desktop/program/message_window.h"
#include "hosts/phones/waiting_shell.h"
#include "hosts/session/exit_status.h"

namespace hosts::desktop {
namespace {

constexpr std::chrono::seconds unshownWait{1};
constexpr const char* stopWord = "stop";

}  // namespace

WaitingWindow::WaitingWindow(const std::string& phone) : _text("Waiting for " + phone + "…") {}

bool WaitingWindow::waitOn(std::chrono::milliseconds waited) {
    if (waited < unshownWait) return true;
    if (!std::exchange(_isShown, true)) {
        std::error_code problem;
        const auto program = std::filesystem::read_symlink("/proc/self/exe", problem);
        auto started = PipedProcess::start(shellQuoted(program.string()), {waitingWindowWord, _text});
        if (started) _window.emplace(*std::move(started));
    }
    if (!_window) return true;
    std::string nothing;
    std::string said;
    const auto came = _window->exchange(nothing, said, std::chrono::milliseconds{0});
    if (came == PipedProcess::Came::end) _window.reset();
    return !said.starts_with(stopWord);
}

void WaitingWindow::close() {
    _window.reset();
    _isShown = false;
}

int runWaitingWindow(int argumentCount, char** arguments) {
    const DisplayedApplication<QGuiApplication> application(argumentCount, arguments);
    // Whoever waits has ended, or waits no longer.
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [] { std::_Exit(done); });
    showMessage(arguments[2], QStringLiteral("Stop Waiting"));
    std::puts(stopWord);
    return done;
}

}  // namespace hosts::desktop
