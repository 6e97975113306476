// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "hosts/session/page_snapshot.h"
#include "hosts/terminal/render/page_layout.h"
#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/render/screen_text.h"
#include "platform/list/specifier.h"
#include "platform/ui/view_controller.h"

namespace hosts::terminal::screen {

/// A page on the screen: which part of it is seen, which row keys act on, and the cells of the rows
/// that are seen. Cells are produced when they are drawn, and for no other row.
class PageView {
public:
    /// The page outlives the view. So do the defaults, by which rows say that they are changed; null for none.
    PageView(platform::UIViewController& page, const ScreenText& text, const Defaults* defaults = nullptr)
        : _page(page), _text(text), _defaults(defaults) {}

    platform::UIViewController& page() const { return _page; }

    /// The part of the page that is seen now, in exactly this many columns and lines.
    std::vector<Line> compose(Size size);

    /// The page's rows are others than before, or stand elsewhere.
    void noteRowsMoved() { _layoutIsOld = true; }
    /// The cells that are seen are to be produced again.
    void noteCellsOld();
    /// The same, for the row at this path alone.
    void noteCellOld(platform::NSIndexPath path);

    /// The row that keys act on; nothing on a page without rows.
    std::optional<platform::NSIndexPath> cursor() const;
    /// The row drawn on this line of the last composed part.
    std::optional<platform::NSIndexPath> rowOnLine(std::size_t line) const;

    /// Where the rows have yet to be laid out, once they are.
    void moveTo(platform::NSIndexPath path);
    /// Rows down, or up when negative.
    void moveRows(std::ptrdiff_t count);
    /// Screens down, or up when negative.
    void movePages(std::ptrdiff_t count);
    void moveToFirst();
    void moveToLast();
    /// Lines down, or up when negative; the cursor stays on a row that is seen.
    void scrollLines(std::ptrdiff_t count);

    /// The cell of a row that is seen, or a newly produced one; null when there is no such row.
    std::shared_ptr<platform::UITableViewCell> cellAt(platform::NSIndexPath path);

private:
    struct SeenCell {
        std::shared_ptr<platform::UITableViewCell> cell;
        bool isOld = false;
        /// What it showed when it was produced: later the file may hold more than the cell shows.
        bool isChanged = false;
    };

    void layOut();
    void placeCursor(std::size_t offset);
    std::size_t cursorAfterLayOut();
    void setCursor(std::size_t row);
    void rememberCursorRow();
    void reveal(std::size_t row);
    void moveCursorIntoView();
    const SeenCell& produce(std::size_t row);
    void release(std::shared_ptr<platform::UITableViewCell> cell);
    void releaseUnseenCells();
    std::vector<Line> composeLines();
    std::vector<Line> composeRow(std::size_t row);
    void addScrollBar(std::vector<Line>& lines) const;
    std::size_t contentWidth() const;
    std::size_t lastTop() const;

    platform::UIViewController& _page;
    ScreenText _text;
    const Defaults* _defaults;
    Size _size;
    PageLayout _layout;
    bool _layoutIsOld = true;
    std::size_t _cursor = 0;
    std::optional<platform::NSIndexPath> _wanted;
    /// The cursor's row, to find it again when rows move; null on a page that is no list.
    std::shared_ptr<platform::PSSpecifier> _cursorRow;
    /// The first line that is seen.
    std::size_t _top = 0;
    /// By row number.
    std::map<std::size_t, SeenCell> _cells;
    /// Cells from before rows moved. They live until the new ones are there, since a row that finds
    /// its cell shows that one again.
    std::vector<std::shared_ptr<platform::UITableViewCell>> _leavingCells;
};

}  // namespace hosts::terminal::screen
