// SPDX-License-Identifier: MIT
#include "platform/services/post_composer.h"

namespace platform {

void SLComposeViewController::finish(SLComposeViewControllerResult) {
    if (auto presenter = presentingViewController()) {
        presenter->dismissViewControllerAnimated_completion(true, nullptr);
    }
}

}  // namespace platform
