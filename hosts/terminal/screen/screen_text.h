// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/terminal/screen/glyphs.h"
#include "hosts/terminal/screen/style.h"

namespace hosts::terminal::screen {

/// Makes text that comes from anywhere fit for the terminal: what could steer it, and what it cannot
/// show, is replaced. All text of the phone goes through here before it is measured.
class ScreenText {
public:
    explicit ScreenText(const Style& style) : _style(style) {}

    const Style& style() const { return _style; }
    const Glyphs& glyphs() const { return glyphsOf(_style); }

    /// On one line.
    std::string plain(std::string_view text) const;
    /// On one line of at most this many columns.
    std::string fitted(std::string_view text, std::size_t width) const;
    /// On lines of at most this many columns, broken at the text's own line breaks too.
    std::vector<std::string> lines(std::string_view text, std::size_t width) const;
    /// The first `most` of these lines; where there are more, the last one ends in an ellipsis.
    std::vector<std::string> firstLines(std::string_view text, std::size_t width, std::size_t most) const;

private:
    Style _style;
};

}  // namespace hosts::terminal::screen
