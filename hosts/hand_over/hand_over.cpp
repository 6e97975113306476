// SPDX-License-Identifier: MIT
#include "hosts/hand_over/hand_over.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>

#include "hosts/hand_over/message_writer.h"
#include "hosts/hand_over/post_link.h"
#include "hosts/system/module_function.h"
#include "hosts/system/new_file.h"

namespace hosts {

namespace {

namespace fs = std::filesystem;
using platform::Done;
using platform::Problem;
using platform::Result;
using Mail = platform::MFMailComposeViewController;

// Mail programs read attachments in their own time, some not before the user sends.
constexpr std::chrono::hours attachmentsKeptFor{7 * 24};

Result<Done> writeMessage(const Mail& mail, WriteMailMessage& write, const NewFile& file) {
    std::vector<MailAttachment> attachments;
    for (const Mail::Attachment& attachment : mail.attachments()) {
        if (attachment.data) attachments.push_back({attachment.fileName, attachment.mimeType, *attachment.data});
    }
    Result<Done> outcome = Done();
    write({mail.subject(), mail.toRecipients(), attachments}, file.descriptor(), outcome);
    if (outcome) return Done();
    return Problem{file.path(), "cannot write the e-mail", outcome.error().text()};
}

void removeOld(const fs::path& folder) {
    std::error_code ignored;
    const auto oldest = fs::file_time_type::clock::now() - attachmentsKeptFor;
    for (const auto& entry : fs::directory_iterator{folder, ignored}) {
        std::error_code unknown;
        const auto written = entry.last_write_time(unknown);
        if (!unknown && written < oldest) fs::remove_all(entry.path(), ignored);
    }
}

Result<std::string> saveAttachment(const Mail::Attachment& attachment, const std::string& folder) {
    auto file = NewFile::create(folder, fileNameFrom(attachment.fileName, "attachment"), "");
    if (!file) return std::move(file).error();
    auto saved = file->write(*attachment.data);
    if (saved) saved = file->keep();
    if (!saved) return std::move(saved).error();
    return file->path();
}

// A folder of its own for each e-mail: the files in it keep their names.
std::string newFolderName() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::to_string(std::chrono::duration_cast<std::chrono::microseconds>(now).count());
}

// Puts the attachments that have data into files of their own names, all or none of them.
Result<std::vector<std::string>> saveAttachments(const Mail& mail, const std::string& cacheFolder) {
    const fs::path all = fs::path{cacheFolder} / "trivel3/mail";
    removeOld(all);
    const std::string folder = all / newFolderName();
    std::vector<std::string> files;
    for (const Mail::Attachment& attachment : mail.attachments()) {
        if (!attachment.data) continue;
        auto file = saveAttachment(attachment, folder);
        if (!file) {
            std::error_code ignored;
            fs::remove_all(folder, ignored);
            return std::move(file).error();
        }
        files.push_back(*std::move(file));
    }
    return files;
}

bool couldBeTakenForOption(const std::string& argument) {
    return argument.starts_with('-');
}

}  // namespace

Result<DocumentsFolder> DesktopHandOver::draftFolder() {
    auto desktop = _desktop.library();
    if (!desktop) return std::move(desktop).error();
    DocumentsFolder folder = (*desktop)->documentsFolder();
    if (folder.path == _unfitFolder) folder.isThere = false;
    return folder;
}

Result<std::string> DesktopHandOver::saveDraft(const Mail& mail, const std::string& draftFolder) {
    auto draft = writeDraft(mail, draftFolder);
    if (!draft) _unfitFolder = draftFolder;
    return draft;
}

Result<std::string> DesktopHandOver::writeDraft(const Mail& mail, const std::string& folder) const {
    auto write = loadFunction<WriteMailMessage>(_mailModule, writeMailMessageSymbol, "the mail module");
    if (!write) return std::move(write).error();
    auto file = NewFile::create(folder, fileNameFrom(mail.subject(), "E-mail"), ".eml");
    if (!file) return std::move(file).error();
    auto saved = writeMessage(mail, **write, *file);
    if (saved) saved = file->keep();
    if (!saved) return std::move(saved).error();
    return file->path();
}

MailHandOver DesktopHandOver::sendMail(const Mail& mail, const std::string& draftFolder) {
    auto draft = saveDraft(mail, draftFolder);
    auto program = giveToProgram(mail, draft);
    return {std::move(program), std::move(draft)};
}

Result<std::string> DesktopHandOver::giveToProgram(const Mail& mail, const Result<std::string>& draft) {
    Problem why{.reason = "no program for e-mail is set up"};
    if (const auto program = _desktop.handlerOfScheme("mailto")) {
        auto composed = composeInProgram(mail);
        if (composed) return *program;
        why = std::move(composed).error();
    }
    if (!draft) return why;
    if (const auto reader = _desktop.handlerOfType("message/rfc822")) {
        auto opened = _programs.run({"xdg-open", *draft});
        if (opened) return *reader;
        why = std::move(opened).error();
    }
    return why;
}

Result<Done> DesktopHandOver::composeInProgram(const Mail& mail) {
    const auto& recipients = mail.toRecipients();
    if (std::ranges::any_of(recipients, couldBeTakenForOption)) return Problem{.reason = "a recipient begins with '-'"};
    auto desktop = _desktop.library();
    if (!desktop) return std::move(desktop).error();
    auto files = saveAttachments(mail, (*desktop)->cacheFolder());
    if (!files) return std::move(files).error();
    std::vector<std::string> arguments{"xdg-email", "--utf8", "--subject", mail.subject()};
    for (const std::string& file : *files)
        arguments.insert(arguments.end(), {"--attach", file});
    arguments.insert(arguments.end(), recipients.begin(), recipients.end());
    return _programs.run(arguments);
}

Result<Done> DesktopHandOver::post(std::string_view serviceType, std::string_view text) {
    const auto link = postLink(serviceType, text);
    if (!link) return Problem{.reason = "there is no way to post to the service " + std::string{serviceType}};
    auto opened = _opener.open(*link);
    if (opened) return Done();
    return Problem{*link, {}, opened.error().text()};
}

}  // namespace hosts
