// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "hosts/phones/phone.h"
#include "hosts/terminal/screen/screen_signals.h"
#include "hosts/terminal/screen/settings_screen.h"
#include "hosts/terminal/screen/terminal.h"

namespace hosts::terminal::screen {

/// Keeps a screen going: waits for the user, for signals and for other processes' changes at once.
class EventLoop {
public:
    /// All outlive the loop.
    struct Parts {
        SettingsScreen& screen;
        Terminal& terminal;
        ScreenSignals& signals;
        PhoneEvents& events;
    };
    explicit EventLoop(Parts parts) : _parts(std::move(parts)) {}

    /// Returns when the user has quit, a signal has asked the program to end, or the terminal is gone. Gives the
    /// signal's number.
    std::optional<int> run();

private:
    void paint();
    void wait();
    void takeInput();
    void takeSignals();
    void takeSignal(int number);
    void takePhoneEvents();

    Parts _parts;
    Picture _picture;
    bool _isOver = false;
    bool _isPainted = false;
    std::optional<int> _endedBy;
};

}  // namespace hosts::terminal::screen
