// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace hosts::terminal::screen {

/// Whether the terminal on standard output is of a kind that can show a screen; if not, one line in
/// `error` says why. Asked first, since curses would end the program, or write without being able to
/// place anything.
bool canShowScreen(std::string& error);

}  // namespace hosts::terminal::screen
