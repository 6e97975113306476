// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <climits>
#include <optional>

namespace hosts {

/// How long something may take, from the moment that this is made.
class Deadline {
public:
    /// For ever.
    Deadline() = default;
    template <class Rep, class Period>
    Deadline(std::chrono::duration<Rep, Period> time) : _end(Clock::now() + time) {}

    /// The milliseconds that are left, as poll takes them: rounded up, 0 when the time is up, and
    /// negative for ever.
    int left() const {
        if (!_end) return -1;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*_end - Clock::now()).count();
        return static_cast<int>(std::clamp<long long>(left, 0, INT_MAX));
    }

private:
    using Clock = std::chrono::steady_clock;

    std::optional<Clock::time_point> _end;
};

}  // namespace hosts
