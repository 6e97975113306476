// SPDX-License-Identifier: MIT
#include "platform/ui/table_view.h"

#include <algorithm>

namespace platform {

std::optional<std::string> UITableViewDataSource::tableView_titleForHeaderInSection(UITableView&, std::size_t) {
    return std::nullopt;
}

std::optional<std::string> UITableViewDataSource::tableView_titleForFooterInSection(UITableView&, std::size_t) {
    return std::nullopt;
}

double UITableViewDelegate::tableView_heightForRowAtIndexPath(UITableView&, NSIndexPath) {
    return defaultRowHeight;
}

double UITableViewDelegate::tableView_estimatedHeightForRowAtIndexPath(UITableView&, NSIndexPath) {
    return defaultRowHeight;
}

bool UITableViewDelegate::tableView_shouldHighlightRowAtIndexPath(UITableView&, NSIndexPath) {
    return true;
}

void UITableViewDelegate::tableView_didSelectRowAtIndexPath(UITableView&, NSIndexPath) {}

void UITableView::setFrame(CGRect frame) {
    UIView::setFrame(frame);
    if (!_tableHeaderView) return;
    const CGRect header = _tableHeaderView->frame();
    _tableHeaderView->setFrame({header.x, header.y, frame.width, header.height});
}

std::shared_ptr<UITableViewCell> UITableView::dequeueReusableCellWithIdentifier(std::string_view identifier) {
    auto found = std::ranges::find_if(_reusableCells,
                                      [identifier](const auto& cell) { return cell->reuseIdentifier() == identifier; });
    if (found == _reusableCells.end()) return nullptr;
    std::shared_ptr<UITableViewCell> cell = std::move(*found);
    _reusableCells.erase(found);
    return cell;
}

void UITableView::enqueueReusableCell(std::shared_ptr<UITableViewCell> cell) {
    if (cell && !cell->reuseIdentifier().empty()) _reusableCells.push_back(std::move(cell));
}

bool UITableView::hasRowAtIndexPath(NSIndexPath path) {
    return _dataSource && path.section < _dataSource->numberOfSectionsInTableView(*this) &&
           path.row < _dataSource->tableView_numberOfRowsInSection(*this, path.section);
}

std::shared_ptr<UITableViewCell> UITableView::produceCellForRowAtIndexPath(NSIndexPath path) {
    if (!hasRowAtIndexPath(path)) return nullptr;
    auto cell = _dataSource->tableView_cellForRowAtIndexPath(*this, path);
    if (!cell) return nullptr;
    const double height =
        _delegate ? _delegate->tableView_heightForRowAtIndexPath(*this, path) : UITableViewDelegate::defaultRowHeight;
    cell->setFrame({0, 0, bounds().width, height});
    cell->layoutSubviews();
    return cell;
}

bool UITableView::touchRowAtIndexPath(NSIndexPath path) {
    if (!hasRowAtIndexPath(path)) return false;
    if (!_delegate || !_delegate->tableView_shouldHighlightRowAtIndexPath(*this, path)) return true;
    _selectedRow = path;
    _delegate->tableView_didSelectRowAtIndexPath(*this, path);
    return true;
}

void UITableView::deselectRowAtIndexPath_animated(NSIndexPath path, bool) {
    if (_selectedRow == path) _selectedRow.reset();
}

}  // namespace platform
