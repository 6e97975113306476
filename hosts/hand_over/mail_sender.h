// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "hosts/hand_over/desktop.h"
#include "hosts/hand_over/xdg_programs.h"
#include "platform/services/mail_composer.h"

namespace hosts {

/// What became of an e-mail.
struct MailHandOver {
    /// The name of the mail program that has been given the e-mail, for the user to send.
    std::optional<std::string> program;
    /// The path of the draft.
    std::optional<std::string> draft;
    /// What did not work, in one line; empty when all did.
    std::string error;

    /// Whether the e-mail is in the user's hands in one way or the other.
    explicit operator bool() const { return program || draft; }
};

/// Gets e-mails out of composers and into the user's hands. Nothing is made or loaded before the
/// user asks for it, so there is nothing to clear up when an e-mail is cancelled.
class MailSender {
public:
    /// `module` is the path of the module that writes messages. The others outlive the object.
    MailSender(std::string module, Desktop& desktop, XdgPrograms& programs)
        : _module(std::move(module)), _desktop(desktop), _programs(programs) {}

    /// Saves the e-mail as an unsent draft among the user's documents, over no other file: a whole
    /// message with its attachments, which any mail program opens.
    MailHandOver saveDraft(const platform::MFMailComposeViewController& composer);

    /// The same, and gives the e-mail to the user's mail program: with xdg-email, or else as the
    /// draft. The draft stays in any case, since not every mail program takes attachments over.
    MailHandOver send(const platform::MFMailComposeViewController& composer);

private:
    bool composeInProgram(const platform::MFMailComposeViewController& composer, std::string& error);
    bool openDraft(const std::string& draft, std::string& error);

    std::string _module;
    Desktop& _desktop;
    XdgPrograms& _programs;
};

}  // namespace hosts
