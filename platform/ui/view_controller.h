// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/foundation/export.h"
#include "platform/foundation/object.h"
#include "platform/ui/device.h"
#include "platform/ui/navigation_item.h"
#include "platform/ui/view.h"

namespace platform {

class UINavigationController;

/// A page, or anything that is shown over one. It is owned by what shows it.
class TRIVEL3_PLATFORM_EXPORT UIViewController : public Object, public std::enable_shared_from_this<UIViewController> {
public:
    /// The screen that it is shown on outlives it.
    explicit UIViewController(const UIScreen& screen) : _screen(screen) {}
    UIViewController(const UIViewController&) = delete;
    UIViewController& operator=(const UIViewController&) = delete;

    /// The class's name, as the class registry has it.
    virtual const char* className() const { return "UIViewController"; }

    /// The page's view; the first call loads it (`loadView`, then `viewDidLoad`).
    UIView& view();

    virtual std::string title() { return {}; }
    UINavigationItem& navigationItem() { return _navigationItem; }

    /// The page is about to be seen. An override calls its base first.
    virtual void viewWillAppear(bool animated);

    /// Shows a controller over this one. Null, from a service that made none, is passed on to the
    /// host all the same.
    void presentViewController_animated_completion(std::shared_ptr<UIViewController> presented, bool animated,
                                                   std::function<void()> completion);
    /// Removes the controller that was presented last, whoever presented it.
    void dismissViewControllerAnimated_completion(bool animated, std::function<void()> completion);

    /// Who presented this controller; null when nobody did, or nobody who is still there.
    std::shared_ptr<UIViewController> presentingViewController() const { return _presentingViewController.lock(); }

    /// The stack that the page is on; null when it is on none.
    UINavigationController* navigationController() const { return _navigationController; }

protected:
    /// Makes the view and hands it to `setView`. An override that makes its own does not call the base.
    virtual void loadView();
    /// The view is there. An override calls its base first.
    virtual void viewDidLoad() {}

    void setView(std::shared_ptr<UIView> view) { _view = std::move(view); }

private:
    friend class UINavigationController;

    const UIScreen& _screen;
    std::shared_ptr<UIView> _view;
    UINavigationItem _navigationItem;
    UINavigationController* _navigationController = nullptr;
    std::weak_ptr<UIViewController> _presentingViewController;
};

}  // namespace platform
