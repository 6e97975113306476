// SPDX-License-Identifier: MIT
#include "platform/ui/view_controller.h"

#include "platform/ui/navigation_controller.h"

namespace platform {

UIView& UIViewController::view() {
    if (!_view) {
        loadView();
        viewDidLoad();
    }
    return *_view;
}

void UIViewController::loadView() {
    setView(std::make_shared<UIView>(_screen.bounds));
}

void UIViewController::viewWillAppear(bool) {}

void UIViewController::presentViewController_animated_completion(std::shared_ptr<UIViewController> presented,
                                                                 bool animated, std::function<void()> completion) {
    if (presented) presented->_presentingViewController = weak_from_this();
    if (_navigationController) _navigationController->present(std::move(presented), animated);
    if (completion) completion();
}

void UIViewController::dismissViewControllerAnimated_completion(bool animated, std::function<void()> completion) {
    if (_navigationController) _navigationController->dismiss(animated);
    if (completion) completion();
}

}  // namespace platform
