// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>
#include <string>

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
    /// stream's, and good until lastError() tells that the stream has ended.
    virtual int descriptor() const = 0;

    /// Why nothing more will come: one line, or empty for as long as the connection lasts. Told by
    /// next() once it gives nothing.
    virtual const std::string& lastError() const = 0;
};

/// Waits for the next notification. Nothing when `stopDescriptor` becomes readable (-1: there is no
/// such thing), when the time is up (no timeout: it never is), or when the stream has ended, which
/// its lastError() then tells. A notification that has arrived goes before all of these.
std::optional<std::string> waitForNotification(NotificationStream& stream, int stopDescriptor,
                                               std::optional<std::chrono::milliseconds> timeout = std::nullopt);

}  // namespace hosts
