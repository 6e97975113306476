// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "hosts/system/deadline.h"
#include "platform/foundation/result.h"

namespace hosts {

/// The notifications that any process posts, in the order of their arrival, from the moment that the
/// stream was made.
class NotificationStream {
public:
    virtual ~NotificationStream() = default;

    /// The name of the next notification that has arrived; nothing when none has. Does not wait.
    virtual std::optional<std::string> next() = 0;

    /// Becomes readable when more may have arrived, for a program that waits for other things too:
    /// it calls next() until that gives nothing, and then waits for this descriptor. It is the
    /// stream's, and good until the stream has ended.
    virtual int descriptor() const = 0;

    /// Why nothing more will come; nothing for as long as the connection lasts. Told by next() once
    /// it gives nothing.
    virtual const std::optional<platform::Problem>& ended() const = 0;
};

/// Waits for the next notification. Nothing when `stopDescriptor` becomes readable (-1: there is no
/// such thing), when the time is up, or when the stream has ended, which its ended() then tells. A
/// notification that has arrived goes before all of these.
std::optional<std::string> waitForNotification(NotificationStream& stream, int stopDescriptor, Deadline deadline = {});

}  // namespace hosts
