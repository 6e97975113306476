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

    /// Hands the notification, whose name is UTF-8 without NUL bytes, to the bus before it returns,
    /// connecting, or connecting again, first when need be. A bus that has not answered by the deadline
    /// is waited for further by the next post.
    virtual platform::Result<platform::Done> post(const std::string& name, const Deadline& deadline) = 0;

    /// When it returns a stream, the bus has taken the subscription: nothing posted from then on is missed.
    virtual platform::Result<std::unique_ptr<NotificationStream>> observe() = 0;
};

/// How long a bus may take to let a client in, or to take a message, before it counts as absent.
constexpr std::chrono::milliseconds busPatience{1000};

/// The name of the module's one entry point, a `ModuleObject<SessionBus>::Make`.
constexpr const char* makeSessionBusSymbol = "trivel3MakeSessionBus";

}  // namespace hosts
