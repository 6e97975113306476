// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a terminal shows, without saying how it is painted.
namespace hosts::terminal {

/// In columns and lines.
struct Size {
    std::size_t width = 0;
    std::size_t height = 0;
    bool operator==(const Size&) const = default;
};

/// What a stretch of text is, for the painter to choose its colours by.
enum class Ink {
    plain,
    strong,
    faint,    ///< greyed rows, footers
    quiet,    ///< what is off, and what leads on: fainter than its label where a terminal is a screen
    good,     ///< checkmarks, what is on
    warning,  ///< what did not work
    bar,      ///< the title bar and the key line
    barTitle,
    barKey,  ///< the names of keys in the key line
    field,   ///< text that can be edited
    button,
    focusedButton,
    scroll,
    scrollTrack,
};

struct Span {
    std::string text;
    Ink ink = Ink::plain;
};

/// One line. What the spans leave over is empty.
struct Line {
    /// Columns from the left edge to the first span.
    std::size_t indent = 0;
    std::vector<Span> spans;
    /// The row that keys act on.
    bool selected = false;

    /// Text of one ink, so many blanks from the left.
    static Line of(std::size_t blanks, std::string text, Ink ink);
    void add(std::string text, Ink ink = Ink::plain);
    void addSpaces(std::size_t count, Ink ink = Ink::plain);
    std::size_t columns() const;
    /// The characters alone.
    std::string text() const;
};

struct Caret {
    std::size_t line = 0;
    std::size_t column = 0;
};

/// The whole screen, or a part of it, from the top.
struct Picture {
    std::vector<Line> lines;
    /// Where text is being typed; nothing when it is not.
    std::optional<Caret> caret;

    /// Puts a line of one ink below the others.
    void add(std::string text, Ink ink = Ink::plain);
};

}  // namespace hosts::terminal
