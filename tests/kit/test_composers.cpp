// SPDX-License-Identifier: MIT
#include "tests/kit/test_composers.h"

namespace kit {

std::shared_ptr<platform::MFMailComposeViewController> TestMailService::makeMailComposeViewController(
    platform::Platform& platform) {
    return canCompose ? std::make_shared<platform::MFMailComposeViewController>(platform) : nullptr;
}

std::shared_ptr<platform::SLComposeViewController> TestPostService::composeViewControllerForServiceType(
    platform::Platform& platform, std::string_view type) {
    if (!canCompose || type != platform::SLServiceTypeTwitter) return nullptr;
    return std::make_shared<platform::SLComposeViewController>(platform, std::string(type));
}

}  // namespace kit
