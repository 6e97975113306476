// SPDX-License-Identifier: MIT
#pragma once

namespace hosts::terminal::screen {

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
