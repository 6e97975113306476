// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "hosts/session/page_snapshot.h"
#include "hosts/terminal/screen/picture.h"
#include "hosts/terminal/screen/screen_text.h"

namespace hosts::terminal::screen {

/// A row as it is drawn: its label with its mark and state on the first line, and what else its cell
/// tells on the others. Gives `size.height` lines of `size.width` columns.
std::vector<Line> rowLines(const RowSnapshot& row, bool selected, Size size, const ScreenText& text);

}  // namespace hosts::terminal::screen
