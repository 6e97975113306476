// SPDX-License-Identifier: MIT
#include "hosts/hand_over/mail_sender.h"

#include <algorithm>

#include "hosts/hand_over/attachment_files.h"
#include "hosts/hand_over/message_writer.h"
#include "hosts/hand_over/new_file.h"
#include "hosts/system/module_function.h"

namespace hosts {

namespace {

using Composer = platform::MFMailComposeViewController;

bool writeMessage(const Composer& composer, WriteMailMessage& write, NewFile& file, std::string& error) {
    std::vector<MailAttachment> attachments;
    for (const Composer::Attachment& attachment : composer.attachments()) {
        if (attachment.data) attachments.push_back({attachment.fileName, attachment.mimeType, *attachment.data});
    }
    std::string reason;
    if (write({composer.subject(), composer.toRecipients(), attachments}, file.descriptor(), reason)) return true;
    error = "cannot write the e-mail " + file.path() + ": " + reason;
    return false;
}

bool couldBeTakenForOption(const std::string& argument) {
    return argument.starts_with('-');
}

}  // namespace

MailHandOver MailSender::saveDraft(const Composer& composer) {
    MailHandOver outcome;
    auto* const write =
        loadFunction<WriteMailMessage>(_module, writeMailMessageSymbol, "the mail module", outcome.error);
    DesktopLibrary* const desktop = write == nullptr ? nullptr : _desktop.library(outcome.error);
    if (desktop == nullptr) return outcome;
    auto file =
        NewFile::create(desktop->documentsFolder(), fileNameFrom(composer.subject(), "E-mail"), ".eml", outcome.error);
    if (file && writeMessage(composer, *write, *file, outcome.error) && file->keep(outcome.error)) {
        outcome.draft = file->path();
    }
    return outcome;
}

MailHandOver MailSender::send(const Composer& composer) {
    MailHandOver outcome = saveDraft(composer);
    std::string reason = "no program for e-mail is set up";
    if (const auto program = _desktop.handlerOfScheme("mailto"); program && composeInProgram(composer, reason)) {
        outcome.program = program;
    } else if (const auto reader = _desktop.handlerOfType("message/rfc822");
               reader && outcome.draft && openDraft(*outcome.draft, reason)) {
        outcome.program = reader;
    }
    if (!outcome.program && outcome.error.empty()) outcome.error = reason;
    return outcome;
}

bool MailSender::composeInProgram(const Composer& composer, std::string& error) {
    const auto& recipients = composer.toRecipients();
    DesktopLibrary* const desktop = _desktop.library(error);
    std::vector<std::string> files;
    if (desktop == nullptr || std::ranges::any_of(recipients, couldBeTakenForOption) ||
        !saveAttachments(composer.attachments(), desktop->cacheFolder(), files, error)) {
        return false;
    }
    std::vector<std::string> arguments{"xdg-email", "--utf8", "--subject", composer.subject()};
    for (const std::string& file : files)
        arguments.insert(arguments.end(), {"--attach", file});
    arguments.insert(arguments.end(), recipients.begin(), recipients.end());
    return _programs.run(arguments, error);
}

bool MailSender::openDraft(const std::string& draft, std::string& error) {
    return _programs.run({"xdg-open", draft}, error);
}

}  // namespace hosts
