// SPDX-License-Identifier: MIT
#include "platform/services/post_composer.h"

#include <utility>

#include "platform/services/platform.h"

namespace platform {

SLComposeViewController::SLComposeViewController(Platform& platform, std::string serviceType)
    : UIViewController(platform.screen), _serviceType(std::move(serviceType)) {}

void SLComposeViewController::finish(SLComposeViewControllerResult) {
    if (auto presenter = presentingViewController()) {
        presenter->dismissViewControllerAnimated_completion(true, nullptr);
    }
}

}  // namespace platform
