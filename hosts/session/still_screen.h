// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/navigation_controller.h"

namespace hosts {

/// A screen on which nothing is seen to change: for who looks at pages once they have settled.
class StillScreen final : public platform::NavigationHost {
public:
    void didPush(platform::UIViewController&, bool) override {}
    void didPop(platform::UIViewController&, platform::UIViewController&, bool) override {}
    void didPresent(const std::shared_ptr<platform::UIViewController>&, bool) override {}
    void didDismiss(bool) override {}
};

}  // namespace hosts
