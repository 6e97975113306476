// SPDX-License-Identifier: MIT
#include "platform/ui/button.h"

namespace platform {

std::shared_ptr<const UIImage> UIButton::imageForState(unsigned state) const {
    auto found = _images.find(state);
    return found == _images.end() ? nullptr : found->second;
}

void UIButton::sizeToFit() {
    auto image = imageForState(UIControlStateNormal);
    CGSize size = image ? image->size() : CGSize{};
    setFrame({frame().x, frame().y, size.width, size.height});
}

void UIButton::addTarget_action_forControlEvents(Action action, unsigned events) {
    _targets.push_back({std::move(action), events});
}

void UIButton::sendActionsForControlEvents(unsigned events) {
    for (const Target& target : _targets) {
        if (target.events & events) target.action(*this);
    }
}

}  // namespace platform
