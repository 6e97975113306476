// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/session/page_snapshot.h"
#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/render/screen_text.h"

namespace hosts::terminal {

/// Which line of a page shows what. Rows have their lines here, and are drawn by `rowLines`.
class PageLayout {
public:
    struct Row {
        platform::NSIndexPath path;
        std::size_t line;    ///< its first line
        std::size_t height;  ///< in lines, at least one
    };

    struct PageLine {
        enum class Kind { text, groupTitle, row, footer };
        Kind kind;
        /// Of the row, or of the line's text.
        std::size_t index;
    };

    /// Gives the lines that a row takes.
    using HeightOf = std::function<std::size_t(platform::NSIndexPath)>;

    PageLayout() = default;
    /// A layout without lines, for `addText` and then `addSection` to fill.
    PageLayout(const ScreenText& text, std::size_t width) : _text(text), _width(width) {}
    /// The layout of a whole page. It is found from counts, titles and heights alone: no cell is
    /// produced for it, so a page may be as long as it likes.
    PageLayout(platform::UIViewController& page, const ScreenText& text, std::size_t width);

    /// Puts text of the page's head below the others, from the left edge or in the middle.
    void addText(std::string_view text, Ink ink, bool isCentred = false);
    /// Puts the next section below all else.
    void addSection(const std::optional<std::string>& title, const std::optional<std::string>& footer,
                    std::size_t rowCount, const HeightOf& heightOf);

    std::size_t lineCount() const { return _lines.size(); }
    const PageLine& line(std::size_t number) const { return _lines[number]; }
    const Line& textOf(const PageLine& line) const { return _texts[line.index]; }

    std::size_t rowCount() const { return _rows.size(); }
    const Row& row(std::size_t number) const { return _rows[number]; }
    /// The number of the row at a path; nothing when there is none.
    std::optional<std::size_t> rowAtPath(platform::NSIndexPath path) const;
    /// The number of the first row that ends below the line; the last row when none does, and nothing
    /// on a page without rows.
    std::optional<std::size_t> rowAtOrBelow(std::size_t line) const;

    /// The lines that are to be seen with a row: its section's title where it is the first row there,
    /// its footer where it is the last one, and all that stands above the page's first row or below
    /// its last.
    struct Surroundings {
        std::size_t first;
        std::size_t end;
    };
    Surroundings surroundings(std::size_t row) const;

private:
    void addLine(PageLine::Kind kind, Line line);
    void addIndented(PageLine::Kind kind, std::string_view text, std::size_t indent, Ink ink);

    ScreenText _text{TextStyle()};
    std::size_t _width = 0;
    std::size_t _sectionCount = 0;
    std::vector<PageLine> _lines;
    std::vector<Line> _texts;
    std::vector<Row> _rows;
};

/// A row as it is drawn: its label with its mark and state on the first line, and what else its cell
/// tells on the others. At most `size.height` lines, each of `size.width` columns.
std::vector<Line> rowLines(const RowSnapshot& row, bool selected, Size size, const ScreenText& text);

}  // namespace hosts::terminal
