// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/post_sheet.h"

namespace hosts::terminal::screen {
namespace {

enum Button : std::size_t { postButton, cancelButton };

constexpr std::size_t indent = 2;
constexpr std::size_t fieldLine = 1;

}  // namespace

PostSheet::PostSheet(std::shared_ptr<Composer> composer, HandOver& handOver, Notices& notices, const ScreenText& text)
    : _composer(std::move(composer)),
      _handOver(handOver),
      _notices(notices),
      _text(text),
      _editor(_composer->text()),
      _buttons({"Post", "Cancel"}),
      _focus(_buttons.count()) {}

Picture PostSheet::compose(Size size) {
    Picture picture;
    picture.add({});
    const Picture field = composeTextField(_editor, size.width - 2 * indent, _text);
    for (const Line& line : field.lines) {
        Line& drawn = picture.lines.emplace_back();
        drawn.addSpaces(indent);
        drawn.add(line.text(), Ink::field);
    }
    if (textHasFocus()) picture.caret = Caret{field.caret->line + fieldLine, field.caret->column + indent};
    picture.add({});
    _buttonLine = picture.lines.size();
    picture.lines.push_back(_buttons.compose(textHasFocus() ? std::nullopt : std::optional(_focus)));
    picture.add({});
    for (const std::string& line :
         _text.lines("Post opens the network's own page with this text in your browser.", size.width - 2 * indent)) {
        picture.add(std::string(indent, ' ') + line, Ink::faint);
    }
    return picture;
}

std::vector<KeyHint> PostSheet::hints() const {
    return {
        {"Tab", textHasFocus() ? "Buttons" : "Next"}, {"Enter", textHasFocus() ? "Done" : "Press"}, {"Esc", "Cancel"}};
}

void PostSheet::moveFocus(std::size_t by) {
    _focus = (_focus + by) % (_buttons.count() + 1);
}

void PostSheet::handle(const Event& event) {
    if (textHasFocus() && _editor.handle(event)) return;
    switch (event.key) {
        case Key::tab:
        case Key::down:
        case Key::right:
            return moveFocus(1);
        case Key::backTab:
        case Key::up:
        case Key::left:
            return moveFocus(_buttons.count());
        case Key::enter:
            return textHasFocus() ? moveFocus(1) : press(_focus);
        case Key::escape:
            return press(cancelButton);
        case Key::click:
            return click(event);
        default:
            if (event.is(' ')) press(_focus);
    }
}

void PostSheet::click(const Event& event) {
    if (event.line < _buttonLine) _focus = _buttons.count();
    const auto button = _buttons.buttonAt(event.column);
    if (button && event.line == _buttonLine) press(*button);
}

void PostSheet::press(std::size_t button) {
    if (button == cancelButton) return _composer->finish(platform::SLComposeViewControllerResult::cancelled);
    _notices.tell(post(*_composer, _editor.text(), _handOver));
}

}  // namespace hosts::terminal::screen
