// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/screen/event.h"

namespace hosts::terminal::screen {

/// The terminal on standard input and output, as a screen. It is put back as it was when the object
/// goes. One at a time; for one thread.
class CursesTerminal {
public:
    /// Null, with one line in `error`, when that does not work.
    static std::unique_ptr<CursesTerminal> open(bool wantsColour, std::string& error);
    CursesTerminal(const CursesTerminal&) = delete;
    CursesTerminal& operator=(const CursesTerminal&) = delete;
    ~CursesTerminal();

    bool hasColour() const;
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
