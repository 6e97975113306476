// SPDX-License-Identifier: MIT
#pragma once

#include "platform/services/mail_composer.h"
#include "platform/services/post_composer.h"

namespace hosts {

/// Makes composers that the host itself shows and finishes.
class Composers final : public platform::MailService, public platform::PostService {
public:
    std::shared_ptr<platform::MFMailComposeViewController> makeMailComposeViewController(
        platform::Platform& platform) override {
        return std::make_shared<platform::MFMailComposeViewController>(platform);
    }
    std::shared_ptr<platform::SLComposeViewController> composeViewControllerForServiceType(
        platform::Platform& platform, std::string_view type) override {
        return std::make_shared<platform::SLComposeViewController>(platform, std::string(type));
    }
};

}  // namespace hosts
