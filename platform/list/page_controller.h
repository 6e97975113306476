// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "platform/foundation/export.h"
#include "platform/list/specifier.h"
#include "platform/services/platform.h"
#include "platform/ui/view_controller.h"

namespace platform {

/// A page that a link row opens.
class TRIVEL3_PLATFORM_EXPORT PSViewController : public UIViewController {
public:
    /// The platform outlives the page.
    explicit PSViewController(Platform& platform) : UIViewController(platform.screen), _platform(platform) {}
    const char* className() const override { return "PSViewController"; }

    Platform& platform() const { return _platform; }

    /// The row that opened the page; null for a page that no row opened.
    const std::shared_ptr<PSSpecifier>& specifier() const { return _specifier; }
    void setSpecifier(std::shared_ptr<PSSpecifier> specifier) { _specifier = std::move(specifier); }

    /// The name of the row that opened the page.
    std::string title() override { return _specifier ? _specifier->name() : std::string(); }

    /// Puts a page on top of this one, with animation.
    void pushController(std::shared_ptr<PSViewController> controller);

private:
    Platform& _platform;
    std::shared_ptr<PSSpecifier> _specifier;
};

}  // namespace platform
