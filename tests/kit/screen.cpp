// SPDX-License-Identifier: MIT
#include "tests/kit/screen.h"

#include <stdexcept>

namespace kit {
namespace {

std::vector<std::string> labelsOf(platform::TableHost::Rows rows) {
    std::vector<std::string> labels;
    for (const auto& row : rows)
        labels.push_back(row->name());
    return labels;
}

}  // namespace

platform::PSListController& Screen::open(std::string_view className) {
    auto made = _platform.classes.make<platform::PSListController>(className, _platform);
    if (!made) throw std::logic_error("no list page of the class " + std::string(className));
    _navigation.pushViewController_animated(made, true);
    return *made;
}

platform::PSListController& Screen::page() const {
    auto* list = dynamic_cast<platform::PSListController*>(top().get());
    if (!list) throw std::logic_error("no list page is on top");
    return *list;
}

std::shared_ptr<platform::UIViewController> Screen::presented() const {
    return _navigation.presented().empty() ? nullptr : _navigation.presented().back();
}

void Screen::tap(std::string_view label) {
    tap(pathOf(label));
}

void Screen::tap(NSIndexPath path) {
    if (!page().table().touchRowAtIndexPath(path)) throw std::logic_error("a tap on a row that is not there");
}

bool Screen::moveSwitch(std::string_view label, bool on) {
    return cell(label)->userMovedSwitch(on);
}

std::vector<NSIndexPath> Screen::paths(std::size_t section) const {
    platform::UITableView& table = page().table();
    std::vector<NSIndexPath> paths;
    const std::size_t rows = page().tableView_numberOfRowsInSection(table, section);
    for (std::size_t row = 0; row < rows; ++row)
        paths.push_back({section, row});
    return paths;
}

std::vector<NSIndexPath> Screen::paths() const {
    std::vector<NSIndexPath> all;
    const std::size_t sections = page().numberOfSectionsInTableView(page().table());
    for (std::size_t section = 0; section < sections; ++section) {
        const auto some = paths(section);
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

std::string Screen::labelAt(NSIndexPath path) const {
    return page().specifierAtIndexPath(path)->name();
}

std::vector<std::string> Screen::labels() const {
    std::vector<std::string> labels;
    for (NSIndexPath path : paths())
        labels.push_back(labelAt(path));
    return labels;
}

std::vector<std::string> Screen::labels(std::size_t section) const {
    std::vector<std::string> labels;
    for (NSIndexPath path : paths(section))
        labels.push_back(labelAt(path));
    return labels;
}

std::vector<std::string> Screen::greyedLabels() const {
    std::vector<std::string> labels;
    for (NSIndexPath path : paths()) {
        if (!cell(path)->isCellEnabled()) labels.push_back(labelAt(path));
    }
    return labels;
}

std::vector<std::string> Screen::checkedLabels(const std::vector<NSIndexPath>& paths) const {
    std::vector<std::string> labels;
    for (NSIndexPath path : paths) {
        if (cell(path)->isChecked()) labels.push_back(labelAt(path));
    }
    return labels;
}

std::vector<std::string> Screen::checkedLabels() const {
    return checkedLabels(paths());
}

std::vector<std::string> Screen::checkedLabels(std::size_t section) const {
    return checkedLabels(paths(section));
}

std::vector<std::string> Screen::onLabels() const {
    std::vector<std::string> labels;
    for (NSIndexPath path : paths()) {
        if (cell(path)->isOn()) labels.push_back(labelAt(path));
    }
    return labels;
}

std::vector<std::optional<std::string>> Screen::headers() const {
    std::vector<std::optional<std::string>> titles;
    platform::UITableView& table = page().table();
    for (std::size_t section = 0; section < page().numberOfSectionsInTableView(table); ++section) {
        titles.push_back(page().tableView_titleForHeaderInSection(table, section));
    }
    return titles;
}

std::vector<std::optional<std::string>> Screen::footers() const {
    std::vector<std::optional<std::string>> titles;
    platform::UITableView& table = page().table();
    for (std::size_t section = 0; section < page().numberOfSectionsInTableView(table); ++section) {
        titles.push_back(page().tableView_titleForFooterInSection(table, section));
    }
    return titles;
}

NSIndexPath Screen::pathOf(std::string_view label) const {
    std::optional<NSIndexPath> found;
    for (NSIndexPath path : paths()) {
        if (labelAt(path) != label) continue;
        if (found) throw std::logic_error("several rows are labelled " + std::string(label));
        found = path;
    }
    if (!found) throw std::logic_error("no row is labelled " + std::string(label));
    return *found;
}

std::shared_ptr<platform::PSSpecifier> Screen::row(std::string_view label) const {
    return page().specifierAtIndexPath(pathOf(label));
}

std::shared_ptr<platform::PSTableCell> Screen::cell(NSIndexPath path) const {
    auto produced = std::dynamic_pointer_cast<platform::PSTableCell>(page().table().produceCellForRowAtIndexPath(path));
    if (!produced) throw std::logic_error("no row's cell where one was asked for");
    return produced;
}

void Screen::didPush(platform::UIViewController& page, bool animated) {
    if (auto* list = dynamic_cast<platform::PSListController*>(&page)) list->setTableHost(this);
    _log.add(event::push(page.className(), animated));
}

void Screen::didPop(platform::UIViewController& page, platform::UIViewController& gone, bool animated) {
    if (auto* list = dynamic_cast<platform::PSListController*>(&gone)) list->setTableHost(nullptr);
    _log.add(event::pop(page.className(), animated));
}

void Screen::didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool animated) {
    _log.add(event::present(presented ? presented->className() : "nothing", animated));
}

void Screen::didDismiss(bool animated) {
    _log.add(event::dismiss(animated));
}

void Screen::reloadTable(platform::PSListController& page) {
    _log.add(event::reloadTable(page.className()));
}

void Screen::reloadRow(platform::PSListController& page, std::size_t position, bool animated) {
    _log.add(event::reload(page.specifiers()[position]->name(), position, animated));
}

void Screen::insertRows(platform::PSListController&, std::size_t position, Rows rows, bool animated) {
    _log.add(event::insert(labelsOf(rows), position, animated));
}

void Screen::removeRows(platform::PSListController&, std::size_t position, Rows rows, bool animated) {
    _log.add(event::remove(labelsOf(rows), position, animated));
}

}  // namespace kit
