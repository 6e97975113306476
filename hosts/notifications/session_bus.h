// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "hosts/notifications/notification_stream.h"

namespace hosts {

/// Notifications on the session bus. The bus library takes longer to load than a program needs to
/// read a setting, so this interface is implemented in a module that is loaded when it is wanted.
class SessionBus {
public:
    virtual ~SessionBus() = default;

    /// Hands the notification to the bus before it returns, connecting, or connecting again, first
    /// when need be. False, with one line in `error`, when that did not work.
    virtual bool post(const std::string& name, std::string& error) = 0;

    /// Null, with one line in `error`, when there is no bus to listen to. When it returns, the bus
    /// has taken the subscription: nothing posted from then on is missed.
    virtual std::unique_ptr<NotificationStream> observe(std::string& error) = 0;
};

/// The module's one entry point, under the name `makeSessionBusSymbol`.
using MakeSessionBus = void(std::unique_ptr<SessionBus>& bus);
constexpr const char* makeSessionBusSymbol = "trivel3MakeSessionBus";

}  // namespace hosts
