// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/page_view.h"

#include <algorithm>
#include <utility>

#include "platform/list/list_controller.h"

namespace hosts::terminal::screen {
namespace {

// The bar and a column between it and the rows.
constexpr std::size_t scrollBarWidth = 2;
// Producing rows can move rows (a page that repairs its settings as it looks at them). It settles
// after one more look; a page that does not is shown as it is then.
constexpr int mostLooks = 3;

using LineKind = PageLayout::PageLine::Kind;

std::size_t moved(std::size_t from, std::ptrdiff_t by, std::size_t most) {
    const auto position = static_cast<std::ptrdiff_t>(from) + by;
    return static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(position, 0, static_cast<std::ptrdiff_t>(most)));
}

}  // namespace

std::vector<Line> PageView::compose(Size size) {
    if (size.width != _size.width) _layoutIsOld = true;
    const bool isHigherOrLower = size.height != _size.height;
    _size = size;
    if (isHigherOrLower && !_layoutIsOld && _cursor < _layout.rowCount()) reveal(_cursor);
    std::vector<Line> lines;
    for (int look = 0; look < mostLooks; ++look) {
        if (_layoutIsOld) layOut();
        lines = composeLines();
        if (!_layoutIsOld) break;
    }
    releaseUnseenCells();
    addScrollBar(lines);
    return lines;
}

void PageView::layOut() {
    const std::size_t line = _cursor < _layout.rowCount() ? _layout.row(_cursor).line : 0;
    const std::size_t offset = line > _top ? line - _top : 0;
    for (auto& [row, seen] : _cells)
        _leavingCells.push_back(std::move(seen.cell));
    _cells.clear();
    _layout = PageLayout(_page, _text, contentWidth());
    _layoutIsOld = false;
    placeCursor(offset);
}

// Where rows have moved, the cursor stays on its row, and its row on its line of the screen.
void PageView::placeCursor(std::size_t offset) {
    if (_layout.rowCount() == 0) {
        _top = std::min(_top, lastTop());
        return;
    }
    const std::size_t row = cursorAfterLayOut();
    const std::size_t line = _layout.row(row).line;
    _top = std::min(line > offset ? line - offset : 0, lastTop());
    setCursor(row);
}

std::size_t PageView::cursorAfterLayOut() {
    const std::size_t nearest = std::min(_cursor, _layout.rowCount() - 1);
    if (const auto wanted = std::exchange(_wanted, std::nullopt)) return _layout.rowAtPath(*wanted).value_or(nearest);
    auto* list = dynamic_cast<platform::PSListController*>(&_page);
    if (!list || !_cursorRow) return nearest;
    const auto& rows = list->specifiers();
    const auto found = std::ranges::find(rows, _cursorRow);
    const auto path = list->indexPathForIndex(static_cast<std::size_t>(std::distance(rows.begin(), found)));
    return path ? _layout.rowAtPath(*path).value_or(nearest) : nearest;
}

std::vector<Line> PageView::composeLines() {
    std::vector<Line> lines;
    std::optional<std::size_t> drawnRow;
    std::vector<Line> drawn;
    const std::size_t end = std::min(_top + _size.height, _layout.lineCount());
    for (std::size_t number = _top; number < end; ++number) {
        const PageLayout::PageLine& line = _layout.line(number);
        if (line.kind != LineKind::row) {
            lines.push_back(_layout.textOf(line));
            continue;
        }
        if (drawnRow != line.index) drawn = composeRow(line.index);
        drawnRow = line.index;
        lines.push_back(drawn[number - _layout.row(line.index).line]);
    }
    lines.resize(_size.height);
    return lines;
}

std::vector<Line> PageView::composeRow(std::size_t row) {
    const PageLayout::Row& laid = _layout.row(row);
    const SeenCell& seen = produce(row);
    RowSnapshot shown = RowSnapshot::of(laid.path, seen.cell);
    shown.isChanged = seen.isChanged;
    const bool isSelected = row == _cursor;
    std::vector<Line> lines = rowLines(shown, isSelected, {contentWidth() - 1, laid.height}, _text);
    lines.resize(laid.height);
    for (Line& line : lines) {
        line.selected = isSelected;
        line.addSpaces(contentWidth() - line.columns());
    }
    return lines;
}

void PageView::addScrollBar(std::vector<Line>& lines) const {
    if (_layout.lineCount() <= _size.height) return;
    const std::size_t thumb = std::max<std::size_t>(1, _size.height * _size.height / _layout.lineCount());
    const std::size_t start = (_size.height - thumb) * _top / lastTop();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool isThumb = i >= start && i < start + thumb;
        lines[i].addSpaces(_size.width - 1 - std::min(_size.width - 1, lines[i].columns()), Ink::scroll);
        lines[i].add(std::string(isThumb ? _text.glyphs().scrollThumb : _text.glyphs().scrollTrack),
                     isThumb ? Ink::scroll : Ink::scrollTrack);
    }
}

const PageView::SeenCell& PageView::produce(std::size_t row) {
    SeenCell& seen = _cells[row];
    if (seen.cell && !seen.isOld) return seen;
    auto cell = tableOfPage(_page)->produceCellForRowAtIndexPath(_layout.row(row).path);
    if (seen.cell && seen.cell != cell) release(std::move(seen.cell));
    const bool isChanged = cell && _defaults && RowLook::of(*cell, _defaults).isChanged;
    seen = {std::move(cell), false, isChanged};
    return seen;
}

std::shared_ptr<platform::UITableViewCell> PageView::cellAt(platform::NSIndexPath path) {
    const auto row = _layout.rowAtPath(path);
    return row ? produce(*row).cell : nullptr;
}

void PageView::release(std::shared_ptr<platform::UITableViewCell> cell) {
    if (platform::UITableView* table = tableOfPage(_page)) table->enqueueReusableCell(std::move(cell));
}

void PageView::releaseUnseenCells() {
    for (auto& cell : std::exchange(_leavingCells, {}))
        release(std::move(cell));
    std::erase_if(_cells, [this](auto& entry) {
        const PageLayout::Row& row = _layout.row(entry.first);
        const bool isSeen = row.line < _top + _size.height && row.line + row.height > _top;
        if (!isSeen) release(std::move(entry.second.cell));
        return !isSeen;
    });
}

void PageView::noteCellsOld() {
    for (auto& [row, seen] : _cells)
        seen.isOld = true;
}

void PageView::noteCellOld(platform::NSIndexPath path) {
    const auto row = _layout.rowAtPath(path);
    const auto seen = row ? _cells.find(*row) : _cells.end();
    if (seen != _cells.end()) seen->second.isOld = true;
}

std::optional<platform::NSIndexPath> PageView::cursor() const {
    if (_cursor >= _layout.rowCount()) return std::nullopt;
    return _layout.row(_cursor).path;
}

std::optional<platform::NSIndexPath> PageView::rowOnLine(std::size_t line) const {
    const std::size_t number = _top + line;
    if (number >= _layout.lineCount() || _layout.line(number).kind != LineKind::row) return std::nullopt;
    return _layout.row(_layout.line(number).index).path;
}

void PageView::moveTo(platform::NSIndexPath path) {
    if (_layoutIsOld)
        _wanted = path;
    else if (const auto row = _layout.rowAtPath(path))
        setCursor(*row);
}

void PageView::moveRows(std::ptrdiff_t count) {
    if (_layout.rowCount() > 0) setCursor(moved(_cursor, count, _layout.rowCount() - 1));
}

// One line of the screen before stays in view.
void PageView::movePages(std::ptrdiff_t count) {
    if (_layout.rowCount() == 0) return scrollLines(count * static_cast<std::ptrdiff_t>(_size.height - 1));
    const std::ptrdiff_t lines = count * static_cast<std::ptrdiff_t>(_size.height - 1);
    const std::size_t line = moved(_layout.row(_cursor).line, lines, _layout.lineCount() - 1);
    _top = moved(_top, lines, lastTop());
    const std::size_t row = *_layout.rowAtOrBelow(line);
    setCursor(row == _cursor ? moved(row, count, _layout.rowCount() - 1) : row);
}

void PageView::moveToFirst() {
    if (_layout.rowCount() > 0) setCursor(0);
}

void PageView::moveToLast() {
    if (_layout.rowCount() > 0) setCursor(_layout.rowCount() - 1);
}

void PageView::scrollLines(std::ptrdiff_t count) {
    _top = moved(_top, count, lastTop());
    moveCursorIntoView();
}

// To the nearest row that is wholly seen, where there is one.
void PageView::moveCursorIntoView() {
    const std::size_t bottom = _top + _size.height;
    const auto isAbove = [this](std::size_t row) { return _layout.row(row).line < _top; };
    const auto isBelow = [this, bottom](std::size_t row) {
        return _layout.row(row).line + _layout.row(row).height > bottom;
    };
    std::size_t row = _cursor;
    while (row + 1 < _layout.rowCount() && isAbove(row))
        ++row;
    while (row > 0 && row < _layout.rowCount() && isBelow(row))
        --row;
    if (row < _layout.rowCount() && !isAbove(row)) _cursor = row;
    rememberCursorRow();
}

void PageView::setCursor(std::size_t row) {
    _cursor = row;
    rememberCursorRow();
    reveal(row);
}

void PageView::rememberCursorRow() {
    auto* list = dynamic_cast<platform::PSListController*>(&_page);
    _cursorRow = list && _cursor < _layout.rowCount() ? list->specifierAtIndexPath(_layout.row(_cursor).path) : nullptr;
}

// The row itself goes before what surrounds it.
void PageView::reveal(std::size_t row) {
    const PageLayout::Row& laid = _layout.row(row);
    const PageLayout::Surroundings around = _layout.surroundings(row);
    const std::size_t height = _size.height;
    if (around.end > _top + height) _top = around.end - height;
    if (around.first < _top) _top = around.first;
    if (laid.line + laid.height > _top + height) _top = laid.line + laid.height - height;
    if (laid.line < _top) _top = laid.line;
    _top = std::min(_top, lastTop());
}

std::size_t PageView::contentWidth() const {
    return _size.width - std::min(_size.width, scrollBarWidth);
}

std::size_t PageView::lastTop() const {
    return _layout.lineCount() > _size.height ? _layout.lineCount() - _size.height : 0;
}

}  // namespace hosts::terminal::screen
