// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/mail_sheet.h"

#include <array>
#include <cstdio>

namespace hosts::terminal::screen {
namespace {

enum Button : std::size_t { sendButton, saveButton, cancelButton };

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

MailSheet::MailSheet(std::shared_ptr<Composer> composer, HandOver& handOver, Notices& notices, const ScreenText& text)
    : _composer(std::move(composer)),
      _handOver(handOver),
      _notices(notices),
      _text(text),
      _buttons({"Send", "Save draft", "Cancel"}) {}

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
    addField(picture, "To", joined(_composer->toRecipients()), size.width);
    addField(picture, "Subject", _composer->subject(), size.width);
    for (const auto& attachment : _composer->attachments())
        addField(picture, "Attachment", attachmentText(attachment), size.width);
    picture.add({});
    _buttonLine = picture.lines.size();
    picture.lines.push_back(_buttons.compose(_focus));
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
    switch (event.key) {
        case Key::right:
        case Key::tab:
        case Key::down:
            _focus = (_focus + 1) % _buttons.count();
            break;
        case Key::left:
        case Key::backTab:
        case Key::up:
            _focus = (_focus + _buttons.count() - 1) % _buttons.count();
            break;
        case Key::enter:
            press(_focus);
            break;
        case Key::escape:
            press(cancelButton);
            break;
        case Key::click:
            if (const auto button = _buttons.buttonAt(event.column); button && event.line == _buttonLine)
                press(*button);
            break;
        default:
            if (event.is(' ')) press(_focus);
    }
}

void MailSheet::press(std::size_t button) {
    if (button == cancelButton) return _composer->finish(platform::MFMailComposeResult::cancelled);
    _notices.tell(button == sendButton ? sendMail(*_composer, _handOver) : saveMail(*_composer, _handOver));
}

}  // namespace hosts::terminal::screen
