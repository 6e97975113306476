// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "platform/list/specifier.h"
#include "platform/ui/view_controller.h"

namespace platform {

/// A page that a link row opens.
class PSViewController : public UIViewController {
public:
    using UIViewController::UIViewController;
    const char* className() const override { return "PSViewController"; }

    /// The row that opened the page; null for a page that no row opened.
    const std::shared_ptr<PSSpecifier>& specifier() const { return _specifier; }
    void setSpecifier(std::shared_ptr<PSSpecifier> specifier) { _specifier = std::move(specifier); }

    /// The name of the row that opened the page.
    std::string title() override { return _specifier ? _specifier->name() : std::string(); }

    /// Puts a page on top of this one, with animation.
    void pushController(std::shared_ptr<PSViewController> controller);

private:
    std::shared_ptr<PSSpecifier> _specifier;
};

}  // namespace platform
