// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/terminal_kind.h"

// This header takes the names of most capabilities for macros, so nothing of ours comes after it.
#include <curses.h>
#include <term.h>
#include <unistd.h>

#include <cstdlib>

namespace hosts::terminal::screen {

bool canShowScreen(std::string& error) {
    const char* const name = std::getenv("TERM");
    if (!name || !*name) {
        error = "TERM is not set";
        return false;
    }
    int status = 0;
    if (::setupterm(nullptr, STDOUT_FILENO, &status) != OK) {
        error = "nothing is known of the terminal TERM=" + std::string(name);
        return false;
    }
    const char* const placing = ::tigetstr("cup");
    const bool canPlace = placing && placing != reinterpret_cast<const char*>(-1);
    ::del_curterm(cur_term);
    if (!canPlace) error = "the terminal TERM=" + std::string(name) + " cannot show a screen";
    return canPlace;
}

}  // namespace hosts::terminal::screen
