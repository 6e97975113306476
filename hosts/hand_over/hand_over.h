// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "hosts/hand_over/url_opener.h"
#include "platform/services/mail_composer.h"

namespace hosts {

/// The two ways of an e-mail into the user's hands.
struct MailHandOver {
    /// The name of the mail program that has been given the e-mail, for the user to send.
    platform::Result<std::string> program;
    /// The path of the draft that was saved.
    platform::Result<std::string> draft;
};

/// How what the user has composed leaves the application.
class HandOver {
public:
    virtual ~HandOver() = default;

    /// Where drafts go, unless the user says otherwise; when the folder is not there, they are to be asked. A problem
    /// where that cannot be told.
    virtual platform::Result<DocumentsFolder> draftFolder() = 0;
    /// Gives the e-mail to the user's mail program, and keeps it as a draft in that folder too.
    virtual MailHandOver sendMail(const platform::MFMailComposeViewController& mail,
                                  const std::string& draftFolder) = 0;
    /// Saves the e-mail as an unsent draft in that folder, which is made when it is missing. Gives its path.
    virtual platform::Result<std::string> saveDraft(const platform::MFMailComposeViewController& mail,
                                                    const std::string& draftFolder) = 0;
    /// Takes the user to where the text can be posted. The problem's path is the address of that place,
    /// for the user to go there by themselves; it is empty for a service that is none of ours.
    virtual platform::Result<platform::Done> post(std::string_view serviceType, std::string_view text) = 0;
};

/// Nothing leaves.
class NoHandOver final : public HandOver {
public:
    platform::Result<DocumentsFolder> draftFolder() override { return nowhere(); }
    MailHandOver sendMail(const platform::MFMailComposeViewController&, const std::string&) override {
        return {nowhere(), nowhere()};
    }
    platform::Result<std::string> saveDraft(const platform::MFMailComposeViewController&, const std::string&) override {
        return nowhere();
    }
    platform::Result<platform::Done> post(std::string_view, std::string_view) override { return nowhere(); }

private:
    static platform::Problem nowhere() { return {.reason = "nothing leaves this session"}; }
};

/// To the programs of the user's desktop. Nothing is made or loaded before the user asks for it, so
/// there is nothing to clear up when an e-mail is cancelled.
class DesktopHandOver final : public HandOver {
public:
    /// `mailModule` is the path of the module that writes messages. The others outlive the object.
    DesktopHandOver(std::string mailModule, Desktop& desktop, XdgPrograms& programs, UrlOpener& opener)
        : _mailModule(std::move(mailModule)), _desktop(desktop), _programs(programs), _opener(opener) {}

    /// Where the user's documents go. A folder that has not taken a draft counts as missing from then on.
    platform::Result<DocumentsFolder> draftFolder() override;
    /// With xdg-email, or else as the draft. The draft stays in any case, since not every mail program
    /// takes attachments over.
    MailHandOver sendMail(const platform::MFMailComposeViewController& mail, const std::string& draftFolder) override;
    /// Over no other file: a whole message with its attachments, which any mail program opens.
    platform::Result<std::string> saveDraft(const platform::MFMailComposeViewController& mail,
                                            const std::string& draftFolder) override;
    /// In the social network's own composer, on the web.
    platform::Result<platform::Done> post(std::string_view serviceType, std::string_view text) override;

private:
    platform::Result<std::string> writeDraft(const platform::MFMailComposeViewController& mail,
                                             const std::string& folder) const;
    platform::Result<std::string> giveToProgram(const platform::MFMailComposeViewController& mail,
                                                const platform::Result<std::string>& draft);
    platform::Result<platform::Done> composeInProgram(const platform::MFMailComposeViewController& mail);

    std::string _mailModule;
    Desktop& _desktop;
    XdgPrograms& _programs;
    UrlOpener& _opener;
    std::string _unfitFolder;
};

}  // namespace hosts
