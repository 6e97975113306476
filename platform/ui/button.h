// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/ui/image.h"
#include "platform/ui/view.h"

namespace platform {

enum UIControlEvents : unsigned { UIControlEventTouchUpInside = 1u << 6 };
enum UIControlState : unsigned { UIControlStateNormal = 0 };

class TRIVEL3_PLATFORM_EXPORT UIButton : public UIView {
public:
    /// A target's method, bound to it. The target outlives the button.
    using Action = std::function<void(UIButton& sender)>;

    using UIView::UIView;
    const char* className() const override { return "UIButton"; }

    void setImage_forState(std::shared_ptr<const UIImage> image, unsigned state) { _images[state] = std::move(image); }
    /// Null when the state has no image.
    std::shared_ptr<const UIImage> imageForState(unsigned state) const;

    /// Takes the size of the normal state's image, and keeps its origin.
    void sizeToFit();

    void addTarget_action_forControlEvents(Action action, unsigned events);
    /// What a host calls when the user has touched the button.
    void sendActionsForControlEvents(unsigned events);

private:
    struct Target {
        Action action;
        unsigned events;
    };
    std::map<unsigned, std::shared_ptr<const UIImage>> _images;
    std::vector<Target> _targets;
};

}  // namespace platform
