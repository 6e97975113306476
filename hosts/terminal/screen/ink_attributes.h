// SPDX-License-Identifier: MIT
#pragma once

#define NCURSES_NOMACROS 1
#include <curses.h>

#include "hosts/terminal/render/picture.h"

namespace hosts::terminal::screen {

/// Makes the colours known to the terminal that curses has at hand.
void startColours();

/// How curses draws an ink. Without colour, boldness and inverse video tell inks apart.
attr_t attributesOf(Ink ink, bool selected, bool colour);

}  // namespace hosts::terminal::screen
