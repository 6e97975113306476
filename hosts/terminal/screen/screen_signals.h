// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/system/arriving_signals.h"

namespace hosts::terminal::screen {

/// The signals that concern a screen: those that ask the program to end or to stop for a while, and
/// those that tell of a new size or of having been stopped. The terminal can be put in order first.
class ScreenSignals : public ArrivingSignals {
public:
    ScreenSignals() : ArrivingSignals({SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGCONT, SIGWINCH}) {}

    /// Stops the process, as SIGTSTP does by itself, and returns when it goes on.
    static void stopProcess();
};

}  // namespace hosts::terminal::screen
