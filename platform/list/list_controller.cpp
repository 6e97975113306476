// SPDX-License-Identifier: MIT
#include "platform/list/list_controller.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "platform/services/platform.h"

namespace platform {
namespace {

std::ptrdiff_t offset(std::size_t position) {
    return static_cast<std::ptrdiff_t>(position);
}

}  // namespace

const PSListController::Specifiers& PSListController::specifiers() {
    if (!hasSpecifiers()) setSpecifiers({});
    return *_specifiers;
}

const PSListController::Specifiers& PSListController::currentSpecifiers() const {
    static const Specifiers none;
    return _specifiers ? *_specifiers : none;
}

void PSListController::setSpecifiers(Specifiers specifiers) {
    _specifiers = std::move(specifiers);
    findSections();
}

void PSListController::findSections() {
    _sections.clear();
    const Specifiers& rows = currentSpecifiers();
    for (std::size_t position = 0; position < rows.size(); ++position) {
        const bool isGroupRow = rows[position]->cellType() == PSCellType::group;
        if (isGroupRow || _sections.empty()) _sections.push_back({position, isGroupRow, position});
        _sections.back().end = position + 1;
    }
}

void PSListController::reloadSpecifiers() {
    _specifiers.reset();
    _sections.clear();
    specifiers();
    if (_tableHost) _tableHost->reloadTable(*this);
}

void PSListController::reloadSpecifier_animated(const std::shared_ptr<PSSpecifier>& specifier, bool animated) {
    auto position = positionOf(specifier);
    if (position && _tableHost) _tableHost->reloadRow(*this, *position, animated);
}

void PSListController::insertContiguousSpecifiers_afterSpecifier_animated(const Specifiers& inserted,
                                                                          const std::shared_ptr<PSSpecifier>& after,
                                                                          bool animated) {
    auto anchor = positionOf(after);
    if (!anchor || inserted.empty()) return;
    const std::size_t position = *anchor + 1;
    _specifiers->insert(_specifiers->begin() + offset(position), inserted.begin(), inserted.end());
    findSections();
    if (_tableHost) _tableHost->insertRows(*this, position, inserted, animated);
}

void PSListController::insertSpecifier_afterSpecifier_animated(const std::shared_ptr<PSSpecifier>& inserted,
                                                               const std::shared_ptr<PSSpecifier>& after,
                                                               bool animated) {
    insertContiguousSpecifiers_afterSpecifier_animated({inserted}, after, animated);
}

void PSListController::removeContiguousSpecifiers_animated(const Specifiers& removed, bool animated) {
    if (removed.empty()) return;
    auto position = positionOf(removed.front());
    if (!position) return;
    auto first = _specifiers->begin() + offset(*position);
    auto last = std::mismatch(first, _specifiers->end(), removed.begin(), removed.end()).first;
    // Kept for the host, which may show them on their way out.
    const Specifiers gone(first, last);
    _specifiers->erase(first, last);
    findSections();
    if (_tableHost) _tableHost->removeRows(*this, *position, gone, animated);
}

void PSListController::removeSpecifier_animated(const std::shared_ptr<PSSpecifier>& removed, bool animated) {
    removeContiguousSpecifiers_animated({removed}, animated);
}

bool PSListController::containsSpecifier(const std::shared_ptr<PSSpecifier>& specifier) const {
    return positionOf(specifier).has_value();
}

std::optional<std::size_t> PSListController::positionOf(const std::shared_ptr<PSSpecifier>& specifier) const {
    const Specifiers& rows = currentSpecifiers();
    auto found = std::ranges::find(rows, specifier);
    if (found == rows.end()) return std::nullopt;
    return static_cast<std::size_t>(std::distance(rows.begin(), found));
}

std::size_t PSListController::indexForIndexPath(NSIndexPath path) const {
    const std::size_t nowhere = currentSpecifiers().size();
    if (path.section >= _sections.size()) return nowhere;
    const Section& section = _sections[path.section];
    return path.row < section.end - section.firstRow() ? section.firstRow() + path.row : nowhere;
}

std::optional<NSIndexPath> PSListController::indexPathForIndex(std::size_t position) const {
    auto after = std::ranges::upper_bound(_sections, position, {}, &Section::start);
    if (after == _sections.begin()) return std::nullopt;
    const Section& section = *std::prev(after);
    if (position < section.firstRow() || position >= section.end) return std::nullopt;
    return NSIndexPath{static_cast<std::size_t>(std::distance(_sections.begin(), after)) - 1,
                       position - section.firstRow()};
}

std::shared_ptr<PSSpecifier> PSListController::specifierAtIndexPath(NSIndexPath path) const {
    const std::size_t position = indexForIndexPath(path);
    return position < currentSpecifiers().size() ? currentSpecifiers()[position] : nullptr;
}

PSListController::Specifiers PSListController::specifiersInGroup(std::size_t section) const {
    if (section >= _sections.size()) return {};
    auto first = currentSpecifiers().begin();
    return Specifiers(first + offset(_sections[section].start), first + offset(_sections[section].end));
}

std::shared_ptr<PSSpecifier> PSListController::groupSpecifier(std::size_t section) const {
    if (section >= _sections.size() || !_sections[section].hasGroupRow) return nullptr;
    return currentSpecifiers()[_sections[section].start];
}

UITableView& PSListController::table() {
    view();
    return *_table;
}

void PSListController::loadView() {
    _table = std::make_shared<UITableView>(platform().screen.bounds, UITableViewStyle::grouped);
    _table->setDataSource(this);
    _table->setDelegate(this);
    setView(_table);
}

void PSListController::viewDidLoad() {
    PSViewController::viewDidLoad();
    specifiers();
}

std::size_t PSListController::numberOfSectionsInTableView(UITableView&) {
    specifiers();
    return _sections.size();
}

std::size_t PSListController::tableView_numberOfRowsInSection(UITableView&, std::size_t section) {
    return section < _sections.size() ? _sections[section].end - _sections[section].firstRow() : 0;
}

std::shared_ptr<UITableViewCell> PSListController::tableView_cellForRowAtIndexPath(UITableView&, NSIndexPath path) {
    std::shared_ptr<PSSpecifier> row = specifierAtIndexPath(path);
    if (!row) return nullptr;
    // A row that is on the screen keeps its cell, so that a page that asks for it changes what is seen.
    if (auto cell = row->cell()) {
        cell->refreshCellContentsWithSpecifier(*row);
        return cell;
    }
    auto cell = std::make_shared<PSTableCell>(row);
    row->setCell(cell);
    return cell;
}

std::optional<std::string> PSListController::tableView_titleForHeaderInSection(UITableView&, std::size_t section) {
    auto group = groupSpecifier(section);
    if (!group || group->name().empty()) return std::nullopt;
    return group->name();
}

std::optional<std::string> PSListController::tableView_titleForFooterInSection(UITableView&, std::size_t section) {
    auto group = groupSpecifier(section);
    return group ? group->textForKey(PSPropertyKey::footerText) : std::nullopt;
}

bool PSListController::tableView_shouldHighlightRowAtIndexPath(UITableView&, NSIndexPath path) {
    auto row = specifierAtIndexPath(path);
    return row && row->isEnabled();
}

void PSListController::tableView_didSelectRowAtIndexPath(UITableView&, NSIndexPath path) {
    auto row = specifierAtIndexPath(path);
    if (!row) return;
    if (row->action) {
        row->action(*row);
    } else if (row->cellType() == PSCellType::link) {
        openDetailPage(row);
    }
}

bool PSListController::openDetailPage(const std::shared_ptr<PSSpecifier>& row) {
    auto page = platform().classes.make<PSViewController>(row->detailControllerClass(), platform());
    if (!page) return false;
    page->setSpecifier(row);
    pushController(std::move(page));
    return true;
}

}  // namespace platform
