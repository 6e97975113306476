// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/display_opening.h"

#include <wayland-client.h>

#include <QByteArray>
#include <QRegularExpression>
#include <QString>
#include <QtGlobal>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/session/exit_status.h"

namespace hosts::desktop {
namespace {

constexpr const char* waylandDisplay = "WAYLAND_DISPLAY";
constexpr const char* xDisplay = "DISPLAY";
constexpr const char* inputMethods = "QT_IM_MODULE";

std::vector<std::pair<QtMsgType, QString>>& heldMessages() {
    static std::vector<std::pair<QtMsgType, QString>> messages;
    return messages;
}

// Qt ends its last words with the names of the plug-ins that it has found.
bool hasPluginForWayland(const QString& lastWords) {
    static const QRegularExpression name(QStringLiteral("\\bwayland\\b"));
    return lastWords.contains(name);
}

std::string whyNoDisplay(const QString& lastWords) {
    if (qEnvironmentVariableIsSet(waylandDisplay) && !hasPluginForWayland(lastWords)) {
        return "no window can be opened on Wayland: Qt's plug-in for it is missing (install the package qt6-wayland)";
    }
    std::string displays;
    for (const char* variable : {waylandDisplay, xDisplay}) {
        if (!qEnvironmentVariableIsSet(variable)) continue;
        displays += (displays.empty() ? "" : ", ") + std::string(variable) + '=' + qgetenv(variable).toStdString();
    }
    if (displays.empty()) {
        return "there is no display to open a window on: neither WAYLAND_DISPLAY nor DISPLAY is set";
    }
    return "no window can be opened on the display that is set: " + displays;
}

struct Disconnecter {
    void operator()(wl_display* display) const { wl_display_disconnect(display); }
};
struct Destroyer {
    void operator()(wl_registry* registry) const { wl_registry_destroy(registry); }
};

void noteSeat(void* hasSeat, wl_registry*, std::uint32_t, const char* interface, std::uint32_t) {
    if (std::string_view(interface) == wl_seat_interface.name) *static_cast<bool*>(hasSeat) = true;
}

// Whether a Wayland desktop answers that has none.
bool isDesktopWithoutSeat() {
    const std::unique_ptr<wl_display, Disconnecter> display(wl_display_connect(nullptr));
    if (!display) return false;
    const std::unique_ptr<wl_registry, Destroyer> registry(wl_display_get_registry(display.get()));
    bool hasSeat = false;
    constexpr wl_registry_listener listener = {noteSeat, [](void*, wl_registry*, std::uint32_t) {}};
    wl_registry_add_listener(registry.get(), &listener, &hasSeat);
    return wl_display_roundtrip(display.get()) >= 0 && !hasSeat;
}

bool willTryWayland() {
    const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
    return qEnvironmentVariableIsSet(waylandDisplay) && (chosen.isEmpty() || chosen.startsWith("wayland"));
}

void holdMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtFatalMsg) std::_Exit(fail(failed, whyNoDisplay(message)));
    heldMessages().emplace_back(type, message);
}

}  // namespace

// Qt's input methods for Wayland rest on a seat without asking whether there is one.
DisplayOpening::DisplayOpening()
    : _isWithoutInputMethods(!qEnvironmentVariableIsSet(inputMethods) && willTryWayland() && isDesktopWithoutSeat()) {
    if (_isWithoutInputMethods) qputenv(inputMethods, "none");
    qInstallMessageHandler(holdMessage);
}

DisplayOpening::~DisplayOpening() {
    if (_isWithoutInputMethods) qunsetenv(inputMethods);
    qInstallMessageHandler(nullptr);
    for (const auto& [type, message] : std::exchange(heldMessages(), {}))
        qt_message_output(type, {}, message);
}

}  // namespace hosts::desktop
