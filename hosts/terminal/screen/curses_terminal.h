// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/screen/event.h"
#include "platform/foundation/result.h"

namespace hosts::terminal::screen {

/// Whether the terminal on standard output is of a kind that can show a screen. Asked first, since
/// curses would write without being able to place anything.
platform::Result<platform::Done> canShowScreen();

/// The terminal on standard input and output, as a screen. It is put back as it was when the object
/// goes. One at a time; for one thread.
class CursesTerminal {
public:
    static platform::Result<std::unique_ptr<CursesTerminal>> open(bool wantsColour);
    CursesTerminal(const CursesTerminal&) = delete;
    CursesTerminal& operator=(const CursesTerminal&) = delete;
    ~CursesTerminal();

    Size size() const;

    /// Brings the terminal to show the picture, with as few characters as it takes.
    void paint(const Picture& picture);

    /// What the user has done; nothing when that is all for now. Does not wait.
    std::optional<Event> nextEvent();

    /// Takes up the terminal's new size.
    void adoptSize();
    /// Puts the terminal back as it was, until `resume`.
    void suspend();
    /// Takes the terminal again, and forgets what it shows.
    void resume();

private:
    class State;
    explicit CursesTerminal(std::unique_ptr<State> state);

    std::unique_ptr<State> _state;
};

}  // namespace hosts::terminal::screen
