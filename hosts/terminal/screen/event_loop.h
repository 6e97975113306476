// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <deque>
#include <memory>
#include <optional>

#include "hosts/phones/phone.h"
#include "hosts/system/waiting.h"
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
        std::shared_ptr<Waiting> waiting;  ///< null where the phone is never waited for
    };
    explicit EventLoop(Parts parts);
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;
    ~EventLoop();

    /// Returns when the user has quit, a signal has asked the program to end, or the terminal is gone. Gives the
    /// signal's number.
    std::optional<int> run();

private:
    void paint();
    void wait();
    void beginTurn();
    bool waitOn(std::chrono::milliseconds waited);
    void keepInput();
    bool holdsInput() const { return !_typed.empty() || !_signals.empty(); }
    std::optional<Event> nextEvent();
    std::optional<int> nextSignal();
    void takeInput();
    void takeSignals();
    void takeSignal(int number);
    void takePhoneEvents();

    Parts _parts;
    Picture _picture;
    bool _isOver = false;
    bool _isPainted = false;
    /// What came while the phone was waited for.
    std::deque<Event> _typed;
    std::deque<int> _signals;
    bool _isWaitTold = false;
    std::optional<int> _endedBy;
};

}  // namespace hosts::terminal::screen
