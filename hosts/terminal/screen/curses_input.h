// SPDX-License-Identifier: MIT
#pragma once

#define NCURSES_NOMACROS 1
#include <curses.h>

#include "hosts/terminal/screen/event.h"

namespace hosts::terminal::screen {

/// What a key that `wget_wch` gave means. `status` is the call's result. Its key is `none` for what
/// this program has no use for.
Event decodeKey(int status, wint_t key);

}  // namespace hosts::terminal::screen
