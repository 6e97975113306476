// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/notifications/session_bus.h"
#include "hosts/system/module_function.h"
#include "platform/services/notification_center.h"

namespace hosts {

/// The system-wide notification centre on Linux: a notification is the signal `Posted` with the name
/// as its one argument, of the interface com.fenwary.DarwinNotifyCenter, sent by the object
/// /com/fenwary/DarwinNotifyCenter on the user's session bus.
///
/// Nothing is loaded, and no bus is looked for, before the first post or observation. A bus that has
/// been restarted is found again.
///
/// What could not be posted, for want of a bus or because it hangs, waits for the next post and is sent
/// before it, or when the center goes; one post then stands for all of its name. A bus that hangs costs
/// `busPatience` at the first post and at the end, and between them a twentieth of the time at most.
class SessionNotifyCenter final : public platform::DarwinNotifyCenter {
public:
    /// `module` is the path of the module that speaks to the bus.
    explicit SessionNotifyCenter(std::string module)
        : _bus(std::move(module), makeSessionBusSymbol, "the session bus module") {}
    SessionNotifyCenter(const SessionNotifyCenter&) = delete;
    SessionNotifyCenter& operator=(const SessionNotifyCenter&) = delete;
    ~SessionNotifyCenter() override;

    /// A name that is no UTF-8 or has a NUL byte in it cannot travel, and is dropped.
    void postNotification(std::string_view name) override;

    /// Posts what waits, for those who have the time. The problem is why it still waits.
    platform::Result<platform::Done> flush();

    /// From here on, what any process posts, this one included.
    platform::Result<std::unique_ptr<NotificationStream>> observe();

private:
    using Clock = std::chrono::steady_clock;

    platform::Result<platform::Done> post(const Deadline& deadline);

    ModuleObject<SessionBus> _bus;
    std::vector<std::string> _waiting;          // each name once
    std::optional<Clock::time_point> _lastTry;  // when the bus last took nothing
};

}  // namespace hosts
