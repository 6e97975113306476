// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <optional>

#include "hosts/linux/descriptor.h"

namespace hosts::terminal::screen {

/// While it lives, the signals that concern a screen (those that ask the program to end or to stop
/// for a while, and those that tell of a new size or of having been stopped) arrive through a
/// descriptor, so that the terminal can be put in order first. Made before the process has other
/// threads.
class ScreenSignals {
public:
    ScreenSignals();
    ScreenSignals(const ScreenSignals&) = delete;
    ScreenSignals& operator=(const ScreenSignals&) = delete;
    ~ScreenSignals();

    /// Readable when a signal has arrived; -1 when the system has no descriptor left to give.
    int descriptor() const { return _descriptor.isOpen() ? _descriptor.get() : -1; }

    /// The number of a signal that has arrived; nothing when none has.
    std::optional<int> next();

    /// Stops the process, as SIGTSTP does by itself, and returns when it goes on.
    static void stopProcess();

private:
    sigset_t _before{};
    Descriptor _descriptor;
};

}  // namespace hosts::terminal::screen
