// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "hosts/notifications/session_bus.h"
#include "platform/services/notification_center.h"

namespace hosts {

/// The system-wide notification centre on Linux: a notification is the signal `Posted` with the name
/// as its one argument, of the interface com.fenwary.DarwinNotifyCenter, sent by the object
/// /com/fenwary/DarwinNotifyCenter on the user's session bus.
///
/// Nothing is loaded, and no bus is looked for, before the first post or observation. Without a bus
/// a post does nothing. A bus that has been restarted is found again.
class SessionNotifyCenter final : public platform::DarwinNotifyCenter {
public:
    /// `module` is the path of the module that speaks to the bus.
    explicit SessionNotifyCenter(std::string module) : _module(std::move(module)) {}

    void postNotification(std::string_view name) override;

    /// From here on, what any process posts, this one included. Null, with the reason in
    /// lastError(), when there is no bus to listen to.
    std::unique_ptr<NotificationStream> observe();

    /// Why the last operation reached nobody: one line, or empty.
    const std::string& lastError() const { return _lastError; }

private:
    using Clock = std::chrono::steady_clock;

    bool loadModule();
    bool tryPost(const std::string& name);

    std::string _module;
    bool _loadingFailed = false;
    std::unique_ptr<SessionBus> _bus;
    Clock::time_point _restUntil;
    std::string _lastError;
};

}  // namespace hosts
