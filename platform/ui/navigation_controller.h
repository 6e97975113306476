// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/ui/view_controller.h"

namespace platform {

/// What a Settings application shows of a navigation stack. Each call comes when the change has been
/// made, and before the page that comes into view is told that it will appear.
class TRIVEL3_PLATFORM_EXPORT NavigationHost {
public:
    virtual ~NavigationHost() = default;
    virtual void didPush(UIViewController& page, bool animated) = 0;
    /// `page` is the one that comes into view; `gone` is released after the call.
    virtual void didPop(UIViewController& page, UIViewController& gone, bool animated) = 0;
    /// `presented` is null when the page was given no controller to present.
    virtual void didPresent(const std::shared_ptr<UIViewController>& presented, bool animated) = 0;
    virtual void didDismiss(bool animated) = 0;
};

/// The stack of pages, and what is presented over them. It keeps both alive.
class TRIVEL3_PLATFORM_EXPORT UINavigationController {
public:
    explicit UINavigationController(NavigationHost& host) : _host(host) {}
    ~UINavigationController();
    UINavigationController(const UINavigationController&) = delete;
    UINavigationController& operator=(const UINavigationController&) = delete;

    /// Loads the page, puts it on top and lets it appear. A view without a size, which is how pages
    /// that make their own leave it, fills the screen.
    void pushViewController_animated(std::shared_ptr<UIViewController> page, bool animated);
    /// Takes the top page off, after what it presented on top, and lets the one below appear. False, with
    /// nothing done, when the top page is the only one.
    bool popViewControllerAnimated(bool animated);

    /// The page on top; null when there is none.
    const std::shared_ptr<UIViewController>& topViewController() const;

    /// What is presented, the one on top last. Entries are null where a page presented nothing.
    const std::vector<std::shared_ptr<UIViewController>>& presented() const { return _presented; }

private:
    friend class UIViewController;
    void present(std::shared_ptr<UIViewController> controller, bool animated);
    void dismiss(bool animated);

    NavigationHost& _host;
    std::vector<std::shared_ptr<UIViewController>> _pages;
    std::vector<std::shared_ptr<UIViewController>> _presented;
};

}  // namespace platform
