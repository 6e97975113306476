// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/services/mail_composer.h"
#include "platform/services/post_composer.h"

namespace hosts::desktop {

/// How what the user has composed leaves the application.
class HandOver {
public:
    struct Outcome {
        bool worked = false;
        /// What the user should know about it, in a sentence or two; empty when it is plain to see.
        std::string message;
    };

    virtual ~HandOver() = default;
    virtual Outcome sendMail(const platform::MFMailComposeViewController& mail) = 0;
    virtual Outcome saveMail(const platform::MFMailComposeViewController& mail) = 0;
    /// The text is the user's, who may have changed the composer's.
    virtual Outcome post(const platform::SLComposeViewController& composer, const std::string& text) = 0;
};

}  // namespace hosts::desktop
