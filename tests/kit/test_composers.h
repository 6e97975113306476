// SPDX-License-Identifier: MIT
#pragma once

#include "platform/services/mail_composer.h"
#include "platform/services/post_composer.h"

namespace kit {

/// Makes real composers, or refuses.
class TestMailService final : public platform::MailService {
public:
    bool canCompose = true;

    std::shared_ptr<platform::MFMailComposeViewController> makeMailComposeViewController(
        platform::Platform& platform) override;
};

/// Makes real composers for the one service that there is, or refuses.
class TestPostService final : public platform::PostService {
public:
    bool canCompose = true;

    std::shared_ptr<platform::SLComposeViewController> composeViewControllerForServiceType(
        platform::Platform& platform, std::string_view type) override;
};

}  // namespace kit
