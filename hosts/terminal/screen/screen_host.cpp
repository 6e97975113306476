// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/screen_host.h"

#include "platform/list/list_controller.h"

namespace hosts::terminal::screen {

void ScreenHost::didPush(platform::UIViewController& page, bool) {
    if (auto* list = dynamic_cast<platform::PSListController*>(&page)) list->setTableHost(this);
    _views.push_back(std::make_unique<PageView>(page, _text, _defaults));
}

// What the page below shows may have been changed by the one above it.
void ScreenHost::didPop(platform::UIViewController&, platform::UIViewController& gone, bool) {
    if (auto* list = dynamic_cast<platform::PSListController*>(&gone)) list->setTableHost(nullptr);
    _views.pop_back();
    top().noteCellsOld();
}

void ScreenHost::didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool) {
    _sheets.push_back(_makeSheet(presented));
}

void ScreenHost::didDismiss(bool) {
    if (!_sheets.empty()) _sheets.pop_back();
}

void ScreenHost::reloadTable(platform::PSListController& page) {
    noteRowsMoved(page);
}

void ScreenHost::reloadRow(platform::PSListController& page, std::size_t position, bool) {
    const auto path = page.indexPathForIndex(position);
    // A group row is its section's title and footer, which may take more lines or fewer than before.
    if (!path) return noteRowsMoved(page);
    if (PageView* view = viewOf(page)) view->noteCellOld(*path);
}

void ScreenHost::insertRows(platform::PSListController& page, std::size_t, Rows, bool) {
    noteRowsMoved(page);
}

void ScreenHost::removeRows(platform::PSListController& page, std::size_t, Rows, bool) {
    noteRowsMoved(page);
}

std::vector<std::string> ScreenHost::titles() const {
    std::vector<std::string> titles;
    for (std::size_t i = 1; i < _views.size(); ++i)
        titles.push_back(_views[i]->page().title());
    return titles;
}

PageView* ScreenHost::viewOf(const platform::UIViewController& page) const {
    for (const auto& view : _views) {
        if (&view->page() == &page) return view.get();
    }
    return nullptr;
}

void ScreenHost::noteRowsMoved(const platform::UIViewController& page) const {
    if (PageView* view = viewOf(page)) view->noteRowsMoved();
}

}  // namespace hosts::terminal::screen
