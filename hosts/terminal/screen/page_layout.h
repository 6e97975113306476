// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "hosts/terminal/screen/screen_text.h"
#include "platform/ui/index_path.h"
#include "platform/ui/table_view.h"
#include "platform/ui/view_controller.h"

namespace hosts::terminal::screen {

/// Which line of a page shows what. It is found from counts, titles and heights alone: no cell is
/// produced for it, so a page may be as long as it likes.
class PageLayout {
public:
    struct Row {
        platform::NSIndexPath path;
        std::size_t line;    ///< its first line
        std::size_t height;  ///< in lines, at least one
    };

    struct PageLine {
        enum class Kind { blank, pageName, pageDetail, groupTitle, row, footer };
        Kind kind = Kind::blank;
        /// Of the row, or of the line's text; nothing for a blank line.
        std::size_t index = 0;
    };

    PageLayout() = default;
    PageLayout(platform::UIViewController& page, const ScreenText& text, std::size_t width);

    std::size_t lineCount() const { return _lines.size(); }
    const PageLine& line(std::size_t number) const { return _lines[number]; }
    const std::string& textOf(const PageLine& line) const { return _texts[line.index]; }

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
    void addHeaderView(platform::UITableView& table, const ScreenText& text, std::size_t width);
    void addSection(platform::UITableView& table, std::size_t section, const ScreenText& text, std::size_t width);
    void addRow(platform::UITableView& table, platform::NSIndexPath path);
    void addBlank();
    void addText(PageLine::Kind kind, std::string text);

    std::vector<PageLine> _lines;
    std::vector<std::string> _texts;
    std::vector<Row> _rows;
};

}  // namespace hosts::terminal::screen
