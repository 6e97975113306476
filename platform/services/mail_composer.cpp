// SPDX-License-Identifier: MIT
#include "platform/services/mail_composer.h"

#include "platform/services/platform.h"

namespace platform {

MFMailComposeViewController::MFMailComposeViewController(Platform& platform)
    : UIViewController(platform.screen), _platform(platform) {}

std::shared_ptr<MFMailComposeViewController> MFMailComposeViewController::copy() const {
    auto other = std::make_shared<MFMailComposeViewController>(_platform);
    other->_delegate = _delegate;
    other->_subject = _subject;
    other->_toRecipients = _toRecipients;
    other->_attachments = _attachments;
    return other;
}

void MFMailComposeViewController::finish(MFMailComposeResult result, const std::string& error) {
    if (auto delegate = _delegate.lock())
        delegate->mailComposeController_didFinishWithResult_error(*this, result, error);
}

}  // namespace platform
