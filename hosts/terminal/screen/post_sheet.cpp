// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/post_sheet.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "hosts/terminal/screen/question.h"

namespace hosts::terminal::screen {
namespace {

enum Button : std::size_t { postButton, cancelButton, buttonCount };

constexpr std::size_t indent = 2;
// All lines but the field's: blank ones, the count and the buttons.
constexpr std::size_t otherLines = 5;

}  // namespace

PostSheet::PostSheet(const ComposedPost& post, Notices& notices, Overlay& overlay, const ScreenText& text)
    : _post(post),
      _notices(notices),
      _overlay(overlay),
      _text(text),
      _editor(_post.text()),
      _buttons({"Post", "Cancel"}),
      _focus(buttonCount) {}

Picture PostSheet::compose(Size size) {
    Picture picture;
    picture.add({});
    addTextField(picture, _editor, {size.width, size.height - std::min(size.height - 1, otherLines)}, _text);
    if (!textHasFocus()) picture.caret.reset();
    picture.lines.push_back(Line::of(indent, _post.roomText(), _post.room() < 0 ? Ink::warning : Ink::faint));
    picture.add({});
    _buttonLine = picture.lines.size();
    picture.lines.push_back(
        _buttons.compose(_focus.button(), _post.obstacle() ? std::optional<std::size_t>(postButton) : std::nullopt));
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

void PostSheet::handle(const Event& event) {
    if (textHasFocus() && _editor.handle(event)) return _post.setText(_editor.text());
    if (_focus.handle(event)) return;
    if (event.key == Key::escape) return cancel();
    if (event.key == Key::click) return click(event);
    if (event.key != Key::enter && !event.is(' ')) return;
    if (const auto button = _focus.button()) return press(*button);
    _focus.moveOn();
}

void PostSheet::click(const Event& event) {
    if (event.line < _buttonLine) _focus.moveToTop();
    const auto button = _buttons.buttonAt(event.column);
    if (button && event.line == _buttonLine) press(*button);
}

void PostSheet::press(std::size_t button) {
    button == postButton ? post() : cancel();
}

void PostSheet::post() {
    _notices.tell(_post.post());
}

void PostSheet::cancel() {
    if (!_post.isChanged()) return _post.cancel();
    askToDrop([this] { _post.cancel(); });
}

void PostSheet::askToDrop(const std::function<void()>& agreed) {
    Question::Wording wording{.title = "Discard the Post?",
                              .text = "What you have written is kept nowhere else.",
                              .yes = "Discard",
                              .no = "Keep writing"};
    _overlay.show(
        std::make_shared<Question>(std::move(wording), _text, _overlay, [agreed](const std::string&) { agreed(); }));
}

}  // namespace hosts::terminal::screen
