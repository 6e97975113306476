// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/desktop/model/hand_over.h"
#include "hosts/hand_over/mail_sender.h"
#include "hosts/hand_over/url_opener.h"

namespace hosts::desktop {

/// Hands e-mails to the user's mail program and posts to the web browser, and tells the user where
/// to find what could not be handed over.
class LinuxHandOver final : public HandOver {
public:
    /// Both outlive the object.
    LinuxHandOver(MailSender& mail, UrlOpener& opener) : _mail(mail), _opener(opener) {}

    Outcome sendMail(const platform::MFMailComposeViewController& mail) override;
    Outcome saveMail(const platform::MFMailComposeViewController& mail) override;
    Outcome post(const platform::SLComposeViewController& composer, const std::string& text) override;

private:
    MailSender& _mail;
    UrlOpener& _opener;
};

}  // namespace hosts::desktop
