// SPDX-License-Identifier: MIT
#include "support/support_email.h"

#include "platform/services/platform.h"
#include "support/support_report.h"

namespace trivel3 {

std::shared_ptr<platform::MFMailComposeViewController> makeSupportEmail(
    platform::Platform& platform, const std::shared_ptr<platform::MFMailComposeViewControllerDelegate>& delegate) {
    auto composer = platform.mail.makeMailComposeViewController(platform);
    if (!composer) return nullptr;
    composer->setMailComposeDelegate(delegate);
    composer->setSubject("Trivel Support");
    composer->setToRecipients({std::string(supportAddress)});
    composer->addAttachmentData_mimeType_fileName(encodedSupportReport(platform), "application/x-plist",
                                                  "Trivel.plist");
    return composer;
}

}  // namespace trivel3
