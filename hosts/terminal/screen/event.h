// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace hosts::terminal::screen {

enum class Key {
    none,
    character,
    up,
    down,
    left,
    right,
    pageUp,
    pageDown,
    home,
    end,
    enter,
    escape,
    backspace,
    deleteForward,
    tab,
    backTab,
    click,
    wheelUp,
    wheelDown,
};

/// What the user has done.
struct Event {
    Key key = Key::none;
    /// The character that was typed, in UTF-8; empty for any other key.
    std::string character;
    /// Where the mouse was, from the screen's top left corner.
    std::size_t line = 0;
    std::size_t column = 0;

    bool is(char typed) const { return key == Key::character && character == std::string(1, typed); }
};

}  // namespace hosts::terminal::screen
