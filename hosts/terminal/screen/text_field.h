// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/line_editor.h"

namespace hosts::terminal::screen {

/// The editor's text in a field of `width` columns, on as many lines as it takes, with the caret
/// where the next character comes.
Picture composeTextField(const LineEditor& editor, std::size_t width, const ScreenText& text);

}  // namespace hosts::terminal::screen
