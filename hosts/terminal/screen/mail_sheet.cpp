// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/mail_sheet.h"

#include <array>
#include <cstdio>
#include <utility>

#include "hosts/terminal/screen/question.h"

namespace hosts::terminal::screen {
namespace {

enum Button : std::size_t { sendButton, saveButton, cancelButton, buttonCount };

constexpr std::size_t nameIndent = 2;
constexpr std::size_t contentIndent = 15;

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : ", ") + text;
    return all;
}

std::string sizeText(std::size_t bytes) {
    constexpr std::size_t kilo = 1000;
    if (bytes < kilo) return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
    std::array<char, 32> text;
    const bool isLarge = bytes >= kilo * kilo;
    const double units = static_cast<double>(bytes) / static_cast<double>(isLarge ? kilo * kilo : kilo);
    std::snprintf(text.data(), text.size(), "%.1f %s", units, isLarge ? "MB" : "kB");
    return text.data();
}

std::string attachmentText(const MailSheet::Composer::Attachment& attachment) {
    const std::string size = attachment.data ? sizeText(attachment.data->size()) : "no data, so it is left out";
    return attachment.fileName + " (" + size + ")";
}

}  // namespace

// What acts on the e-mail is not one key too many away from the row that has opened it.
MailSheet::MailSheet(const ComposedMail& mail, Notices& notices, Overlay& overlay, const ScreenText& text)
    : _mail(mail),
      _notices(notices),
      _overlay(overlay),
      _text(text),
      _buttons({"Send", "Save draft", "Cancel"}),
      _focus(buttonCount) {}

void MailSheet::addField(Picture& picture, std::string_view name, std::string_view content, std::size_t width) const {
    for (const std::string& part : _text.lines(content, width - contentIndent - 1)) {
        Line& line = picture.lines.emplace_back();
        line.addSpaces(nameIndent);
        line.add(std::string(name), Ink::faint);
        line.addSpaces(contentIndent - nameIndent - name.size());
        line.add(part);
        name = {};
    }
}

Picture MailSheet::compose(Size size) {
    Picture picture;
    picture.add({});
    addField(picture, "To", joined(_mail.composer().toRecipients()), size.width);
    addField(picture, "Subject", _mail.composer().subject(), size.width);
    for (const auto& attachment : _mail.composer().attachments())
        addField(picture, "Attachment", attachmentText(attachment), size.width);
    picture.add({});
    _buttonLine = picture.lines.size();
    picture.lines.push_back(_buttons.compose(_focus.button()));
    picture.add({});
    for (const std::string& line :
         _text.lines("Send opens it in your mail program. A draft is kept among your documents.",
                     size.width - 2 * nameIndent)) {
        picture.add(std::string(nameIndent, ' ') + line, Ink::faint);
    }
    return picture;
}

std::vector<KeyHint> MailSheet::hints() const {
    return {{"Tab", "Next"}, {"Enter", "Press"}, {"Esc", "Cancel"}};
}

void MailSheet::handle(const Event& event) {
    if (_focus.handle(event)) return;
    if (event.key == Key::escape) return press(cancelButton);
    if (event.key == Key::enter || event.is(' ')) return press(_focus.button());
    if (event.key != Key::click || event.line != _buttonLine) return;
    if (const auto button = _buttons.buttonAt(event.column)) press(*button);
}

void MailSheet::press(std::optional<std::size_t> button) {
    if (!button) return _notices.say("Tab goes to the buttons");
    if (*button == cancelButton) return _mail.cancel();
    handOver(*button == sendButton ? ComposedMail::Way::send : ComposedMail::Way::saveDraft);
}

void MailSheet::handOver(ComposedMail::Way way) {
    if (auto folder = _mail.folderToAskFor()) return askForFolder(way, *std::move(folder));
    _notices.tell(_mail.handOver(way));
}

void MailSheet::askForFolder(ComposedMail::Way way, std::string suggestion) {
    const auto agreed = [this, way](const std::string& typed) {
        const auto folder = ComposedMail::folderNamed(typed);
        if (folder) return _notices.tell(_mail.handOver(way, *folder));
        _notices.warn(folder.error().text());
        askForFolder(way, typed);
    };
    Question::Wording wording{
        .title = "Where to Keep the Draft",
        .text =
            "You have no documents folder that can take the draft of this e-mail. In which folder is it to be kept? "
            "It is made where it is missing.",
        .yes = way == ComposedMail::Way::send ? "Send" : "Save",
        .no = "Back",
        .suggestion = std::move(suggestion)};
    _overlay.show(std::make_shared<Question>(std::move(wording), _text, _overlay, agreed));
}

}  // namespace hosts::terminal::screen
