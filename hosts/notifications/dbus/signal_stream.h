// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <memory>

#include "hosts/notifications/dbus/connection.h"
#include "hosts/notifications/notification_stream.h"

namespace hosts {

/// The notifications on a connection of its own.
class SignalStream final : public NotificationStream {
public:
    /// Null, with one line in `error`, when the bus does not take the subscription.
    static std::unique_ptr<SignalStream> subscribe(Connection bus, std::string& error);

    std::optional<std::string> next() override;
    int descriptor() const override;
    const std::string& lastError() const override { return _lastError; }

private:
    explicit SignalStream(Connection bus) : _bus(std::move(bus)) {}
    static int signalArrived(sd_bus_message* message, void* stream, sd_bus_error* error);

    Connection _bus;
    Slot _subscription;
    std::deque<std::string> _arrived;
    std::string _lastError;
};

}  // namespace hosts
