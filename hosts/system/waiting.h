// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace hosts {

/// Why something has not been done that was waited for.
constexpr const char* stoppedWaiting = "you have stopped waiting for the phone";

/// What a program does while it waits for a phone: it tells its user, and lets them stop. One for a phone and a thread.
class Waiting {
public:
    /// At least so often `Meanwhile` is called.
    static constexpr std::chrono::milliseconds slice{50};

    /// Is given how long it is since the phone was first waited for in this turn; false: the user waits no longer. It
    /// touches neither the phone nor the pages, which are in the midst of something.
    using Meanwhile = std::function<bool(std::chrono::milliseconds)>;

    void use(Meanwhile meanwhile) { _meanwhile = std::move(meanwhile); }
    bool isUsed() const { return _meanwhile != nullptr; }

    /// For who waits: whether to go on. Once the user has stopped, nothing is waited for in this turn any more.
    bool goesOn() {
        const auto now = Clock::now();
        if (!_since) _since = now;
        if (!_isStopped && _meanwhile)
            _isStopped = !_meanwhile(std::chrono::duration_cast<std::chrono::milliseconds>(now - *_since));
        return !_isStopped;
    }
    bool isStopped() const { return _isStopped; }

    /// A new turn: what is waited for from here on is another matter.
    void beginAnew() {
        _since.reset();
        _isStopped = false;
    }

private:
    using Clock = std::chrono::steady_clock;

    Meanwhile _meanwhile;
    std::optional<Clock::time_point> _since;
    bool _isStopped = false;
};

}  // namespace hosts
