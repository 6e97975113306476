// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/page.h"

#include "hosts/session/page_snapshot.h"

namespace hosts::desktop {
namespace {

std::shared_ptr<platform::UIView> rightView(platform::UIViewController& page) {
    const auto& item = page.navigationItem().rightBarButtonItem();
    return item ? item->customView() : nullptr;
}

}  // namespace

Page::Page(std::shared_ptr<platform::UIViewController> controller, const Page* before, const Defaults* defaults)
    : _controller(std::move(controller)),
      _depth(before ? before->depth() + 1 : 0),
      _backTitle(before ? before->title() : QString()) {
    platform::UITableView* table = tableOfPage(*_controller);
    if (!table) return;
    _table =
        std::make_unique<TableModel>(*table, dynamic_cast<platform::PSListController*>(_controller.get()), defaults);
}

QString Page::title() const {
    return QString::fromStdString(_controller->title());
}

ViewHandle Page::titleView() const {
    return {_controller->navigationItem().titleView()};
}

ViewHandle Page::rightItem() const {
    return {rightView(*_controller)};
}

QString Page::rightItemName() const {
    platform::UIButton* const button = rightButtonOf(*_controller);
    return button ? QString::fromStdString(button->accessibilityLabel()) : QString();
}

std::shared_ptr<platform::UIView> Page::headerView() const {
    platform::UITableView* table = tableOfPage(*_controller);
    return table ? table->tableHeaderView() : nullptr;
}

ViewHandle Page::header() const {
    return {headerView(), _headerRevision};
}

QString Page::headerText() const {
    const auto header = headerView();
    return header ? spokenTexts(*header) : QString();
}

void Page::setPlace(Place place, bool animated) {
    if (_place == place) return;
    _place = place;
    _isAnimated = animated;
    emit placeChanged();
}

void Page::resize(double width, double height) {
    if (_isGone || width <= 0 || height <= 0) return;
    const platform::CGRect& frame = _controller->view().frame();
    if (frame.width == width && frame.height == height) return;
    if (_table) _table->resize(width, height);
    if (!_table) _controller->view().setFrame({0, 0, width, height});
    ++_headerRevision;
    emit headerChanged();
}

void Page::letGo() {
    _isGone = true;
    if (_table) _table->letGo();
}

void Page::type(const QString& typed) {
    const int line = _table->type(typed);
    if (line >= 0) emit rowWanted(line);
}

void Page::reload() {
    if (_isGone) return;
    if (auto* list = dynamic_cast<platform::PSListController*>(_controller.get())) list->reloadSpecifiers();
    if (_table) _table->redrawVisibleRows();
}

void Page::touchRightItem() {
    platform::UIButton* const button = rightButtonOf(*_controller);
    if (button && !_isGone) button->sendActionsForControlEvents(platform::UIControlEventTouchUpInside);
}

}  // namespace hosts::desktop
