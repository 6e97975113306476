// SPDX-License-Identifier: MIT
#include "platform/services/mail_composer.h"

#include "platform/services/platform.h"

namespace platform {

MFMailComposeViewController::MFMailComposeViewController(Platform& platform) : UIViewController(platform.screen) {}

void MFMailComposeViewController::finish(MFMailComposeResult result, const std::string& error) {
    if (auto delegate = _delegate.lock())
        delegate->mailComposeController_didFinishWithResult_error(*this, result, error);
}

}  // namespace platform
