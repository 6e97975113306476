// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/question.h"

#include <utility>

namespace hosts::terminal::screen {
namespace {

enum Answer : std::size_t { yes, no, answerCount };

constexpr std::size_t questionIndent = 2;
constexpr std::size_t linesBelowField = 2;

}  // namespace

// What could be lost is not lost by one key too many.
Question::Question(Wording wording, const ScreenText& text, Overlay& overlay,
                   std::function<void(const std::string& typed)> agreed)
    : _wording(std::move(wording)),
      _text(text),
      _overlay(overlay),
      _agreed(std::move(agreed)),
      _editor(_wording.suggestion.value_or(std::string())),
      _buttons({_wording.yes, _wording.no}),
      _focus(_wording.suggestion ? SheetFocus(answerCount) : SheetFocus::onButton(no, answerCount)) {}

Picture Question::compose(Size size) {
    Picture picture;
    picture.add({});
    for (const std::string& line : _text.lines(_wording.text, size.width - 2 * questionIndent))
        picture.add(std::string(questionIndent, ' ') + line);
    picture.add({});
    if (_wording.suggestion) {
        const std::size_t taken = picture.lines.size() + linesBelowField;
        addTextField(picture, _editor, {size.width, size.height > taken ? size.height - taken : 1}, _text);
        if (!fieldHasFocus()) picture.caret.reset();
        picture.add({});
    }
    _buttonLine = picture.lines.size();
    picture.lines.push_back(_buttons.compose(_focus.button()));
    return picture;
}

std::vector<KeyHint> Question::hints() const {
    return {{"Tab", "Next"}, {"Enter", fieldHasFocus() ? _wording.yes : "Press"}, {"Esc", _wording.no}};
}

void Question::handle(const Event& event) {
    if (fieldHasFocus() && _editor.handle(event)) return;
    if (_focus.handle(event)) return;
    if (event.key == Key::escape) return answer(no);
    if (event.key == Key::enter || event.is(' ')) return answer(_focus.button().value_or(yes));
    if (event.key != Key::click) return;
    if (_wording.suggestion && event.line < _buttonLine) _focus.moveToTop();
    const auto button = _buttons.buttonAt(event.column);
    if (button && event.line == _buttonLine) answer(*button);
}

void Question::answer(std::size_t button) {
    const auto agreed = button == yes ? std::move(_agreed) : nullptr;
    const std::string typed = _editor.text();
    _overlay.close();
    if (agreed) agreed(typed);
}

}  // namespace hosts::terminal::screen
