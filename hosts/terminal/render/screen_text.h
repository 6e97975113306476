// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hosts::terminal {

/// What a terminal can show.
struct TextStyle {
    bool colour = false;
    /// Whether signs beyond ASCII may be drawn: ✓, › and others.
    bool unicode = true;
    std::size_t width = 80;
};

/// Whether text is coloured.
enum class ColourUse {
    automatic,  ///< on a terminal that has colour, unless NO_COLOR is set
    always,
    never,
};

/// The style that suits standard output, with its terminal's width. Sets the process's locale for character types.
TextStyle styleForStandardOutput(ColourUse colour = ColourUse::automatic);

/// The signs that stand for what the phone draws. Each takes one column unless it says more.
struct Glyphs {
    std::string_view marker;  ///< the row that keys act on
    std::string_view check;
    std::string_view changed;  ///< before a row that is not at its default
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

/// Makes text that comes from anywhere fit for the terminal: what could steer it, and what it cannot
/// show, is replaced. All text of the phone goes through here before it is measured.
class ScreenText {
public:
    explicit ScreenText(const TextStyle& style);
    /// For text that goes out once: switches are drawn in ASCII, and characters that are joined into one stay so.
    static ScreenText forPrinting(const TextStyle& style);

    const Glyphs& glyphs() const { return *_glyphs; }

    /// On one line.
    std::string plain(std::string_view text) const;
    /// On one line of at most this many columns.
    std::string fitted(std::string_view text, std::size_t width) const;
    /// On lines of at most this many columns, broken at the text's own line breaks too.
    std::vector<std::string> lines(std::string_view text, std::size_t width) const;
    /// The first `most` of these lines; where there are more, the last one ends in an ellipsis.
    std::vector<std::string> firstLines(std::string_view text, std::size_t width, std::size_t most) const;

private:
    ScreenText(const Glyphs& glyphs, bool isAscii, bool keepsJoined)
        : _glyphs(&glyphs), _isAscii(isAscii), _keepsJoined(keepsJoined) {}

    const Glyphs* _glyphs;
    bool _isAscii;
    bool _keepsJoined;
};

}  // namespace hosts::terminal
