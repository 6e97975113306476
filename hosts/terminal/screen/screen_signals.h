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

/// While it lives, a signal that ends the process on the spot (a crash, a limit that was reached, one
/// that nobody expects here) puts the terminal back first. Signals that somebody else already takes
/// are left to them. One at a time, made while curses has the terminal's description at hand.
class LastResort {
public:
    /// Takes the terminal on standard input and output to be set as it is to be put back.
    LastResort();
    LastResort(const LastResort&) = delete;
    LastResort& operator=(const LastResort&) = delete;
    ~LastResort();

    /// Adds what the terminal must be sent. From here on the signals are taken.
    void arm();
};

}  // namespace hosts::terminal::screen
