// SPDX-License-Identifier: MIT
#include <cerrno>
#include <string>

#include "hosts/notifications/dbus/connection.h"
#include "hosts/notifications/dbus/notification_signal.h"
#include "hosts/notifications/dbus/signal_stream.h"
#include "hosts/notifications/session_bus.h"
#include "hosts/system/error_text.h"

namespace hosts {

namespace {

class SdSessionBus final : public SessionBus {
public:
    bool post(const std::string& name, std::string& error) override;
    std::unique_ptr<NotificationStream> observe(std::string& error) override;

private:
    int send(const std::string& name);

    Connection _bus;
};

// A connection that was good at the last post may be that of a bus which has gone since; then the
// one that stands in its place, if any, gets the notification.
bool SdSessionBus::post(const std::string& name, std::string& error) {
    if (_bus && send(name) >= 0) return true;
    _bus = connectToSessionBus(error);
    if (!_bus) return false;
    const int result = send(name);
    if (result < 0) error = "the session bus takes no notification: " + errorText(-result);
    return result >= 0;
}

int SdSessionBus::send(const std::string& name) {
    using namespace notificationSignal;
    const int result = sd_bus_emit_signal(_bus.get(), path, interface, member, signature, name.c_str());
    return result < 0 ? result : flush(*_bus);
}

std::unique_ptr<NotificationStream> SdSessionBus::observe(std::string& error) {
    Connection bus = connectToSessionBus(error);
    if (!bus) return nullptr;
    return SignalStream::subscribe(std::move(bus), error);
}

}  // namespace

}  // namespace hosts

extern "C" __attribute__((visibility("default"))) void trivel3MakeSessionBus(std::unique_ptr<hosts::SessionBus>& bus) {
    bus = std::make_unique<hosts::SdSessionBus>();
}
