// SPDX-License-Identifier: MIT
#include "platform/ui/navigation_controller.h"

namespace platform {

UINavigationController::~UINavigationController() {
    // Pages may be kept by others for longer than the stack.
    for (const auto& page : _pages)
        page->_navigationController = nullptr;
}

const std::shared_ptr<UIViewController>& UINavigationController::topViewController() const {
    static const std::shared_ptr<UIViewController> none;
    return _pages.empty() ? none : _pages.back();
}

void UINavigationController::pushViewController_animated(std::shared_ptr<UIViewController> page, bool animated) {
    page->_navigationController = this;
    _pages.push_back(page);
    if (page->view().frame() == CGRect{}) page->view().setFrame(page->_screen.bounds);
    _host.didPush(*page, animated);
    page->viewWillAppear(animated);
}

bool UINavigationController::popViewControllerAnimated(bool animated) {
    if (_pages.size() < 2) return false;
    while (!_presented.empty() && _presented.back() && _presented.back()->presentingViewController() == _pages.back()) {
        dismiss(animated);
    }
    std::shared_ptr<UIViewController> gone = std::move(_pages.back());
    _pages.pop_back();
    gone->_navigationController = nullptr;
    std::shared_ptr<UIViewController> page = _pages.back();
    _host.didPop(*page, *gone, animated);
    page->viewWillAppear(animated);
    return true;
}

void UINavigationController::present(std::shared_ptr<UIViewController> controller, bool animated) {
    _presented.push_back(std::move(controller));
    _host.didPresent(_presented.back(), animated);
}

void UINavigationController::dismiss(bool animated) {
    if (_presented.empty()) return;
    // Kept alive for the host's last look: the caller may be the presented controller itself.
    std::shared_ptr<UIViewController> gone = std::move(_presented.back());
    _presented.pop_back();
    _host.didDismiss(animated);
}

}  // namespace platform
