// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "hosts/terminal/screen/style.h"

namespace hosts::terminal::screen {

/// The signs that stand for what the phone draws. Each takes one column unless it says more.
struct Glyphs {
    std::string_view marker;  ///< the row that keys act on
    std::string_view check;
    std::string_view link;
    std::string_view back;
    std::string_view heart;      ///< any number of columns
    std::string_view switchOn;   ///< any number of columns, as many as `switchOff`
    std::string_view switchOff;  ///< any number of columns
    std::string_view ellipsis;   ///< any number of columns
    std::string_view times;
    std::string_view scrollThumb;
    std::string_view scrollTrack;
    std::string_view upDownKeys;  ///< any number of columns
    std::string_view leftKey;     ///< any number of columns
};

const Glyphs& glyphsOf(const Style& style);

}  // namespace hosts::terminal::screen
