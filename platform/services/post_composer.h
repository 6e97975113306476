// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/export.h"
#include "platform/ui/view_controller.h"

namespace platform {

struct Platform;

inline constexpr std::string_view SLServiceTypeTwitter = "SLServiceTypeTwitter";

enum class SLComposeViewControllerResult { cancelled = 0, done = 1 };

/// A post to a social network for the user to look over and change. It dismisses itself.
class TRIVEL3_PLATFORM_EXPORT SLComposeViewController : public UIViewController {
public:
    SLComposeViewController(Platform& platform, std::string serviceType);
    const char* className() const override { return "SLComposeViewController"; }

    const std::string& serviceType() const { return _serviceType; }
    const std::string& text() const { return _text; }
    void setInitialText(std::string text) { _text = std::move(text); }

    /// What a host calls when the user has posted or cancelled.
    void finish(SLComposeViewControllerResult result);

private:
    std::string _serviceType;
    std::string _text;
};

/// Makes post composers.
class TRIVEL3_PLATFORM_EXPORT PostService {
public:
    virtual ~PostService() = default;
    /// Null when the service is unknown.
    virtual std::shared_ptr<SLComposeViewController> composeViewControllerForServiceType(Platform& platform,
                                                                                         std::string_view type) = 0;
};

}  // namespace platform
