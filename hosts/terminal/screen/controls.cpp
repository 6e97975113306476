// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/controls.h"

#include <algorithm>

#include "hosts/terminal/render/printable.h"
#include "platform/foundation/utf8.h"

namespace hosts::terminal::screen {
namespace {

constexpr std::size_t buttonIndent = 2;
constexpr std::size_t buttonGap = 2;
constexpr std::size_t fieldIndent = 2;

// The brackets tell of the focus where there is no colour.
std::string drawnButton(const std::string& label, bool isFocused) {
    return isFocused ? "[>" + label + "<]" : "[ " + label + " ]";
}

}  // namespace

Line ButtonRow::compose(std::optional<std::size_t> focused, std::optional<std::size_t> off) const {
    Line line;
    line.addSpaces(buttonIndent);
    for (std::size_t i = 0; i < _labels.size(); ++i) {
        if (i > 0) line.addSpaces(buttonGap);
        const Ink usual = i == off ? Ink::faint : Ink::button;
        line.add(drawnButton(_labels[i], i == focused), i == focused ? Ink::focusedButton : usual);
    }
    return line;
}

std::optional<std::size_t> ButtonRow::buttonAt(std::size_t column) const {
    std::size_t start = buttonIndent;
    for (std::size_t i = 0; i < _labels.size(); ++i) {
        const std::size_t end = start + columns(drawnButton(_labels[i], false));
        if (column >= start && column < end) return i;
        start = end + buttonGap;
    }
    return std::nullopt;
}

SheetFocus SheetFocus::onButton(std::size_t first, std::size_t buttons) {
    SheetFocus focus(buttons);
    focus._places = buttons;
    focus._place = first;
    return focus;
}

std::optional<std::size_t> SheetFocus::button() const {
    return _place == _buttons ? std::nullopt : std::optional(_place);
}

bool SheetFocus::handle(const Event& event) {
    switch (event.key) {
        case Key::tab:
        case Key::down:
        case Key::right:
            move(1);
            return true;
        case Key::backTab:
        case Key::up:
        case Key::left:
            move(_places - 1);
            return true;
        default:
            return false;
    }
}

LineEditor::LineEditor(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = platform::firstUtf8Character(text).length;
        _characters.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    _caret = _characters.size();
}

std::string LineEditor::text() const {
    std::string all;
    for (const std::string& character : _characters)
        all += character;
    return all;
}

void LineEditor::setCaret(std::size_t caret) {
    _caret = std::min(caret, _characters.size());
}

bool LineEditor::moveCaret(Key key) {
    switch (key) {
        case Key::left:
            _caret -= _caret > 0 ? 1 : 0;
            return true;
        case Key::right:
            setCaret(_caret + 1);
            return true;
        case Key::home:
            _caret = 0;
            return true;
        case Key::end:
            _caret = _characters.size();
            return true;
        default:
            return false;
    }
}

bool LineEditor::handle(const Event& event) {
    const auto at = [this] { return _characters.begin() + static_cast<std::ptrdiff_t>(_caret); };
    switch (event.key) {
        case Key::character:
            _characters.insert(at(), event.character);
            ++_caret;
            return true;
        case Key::backspace:
            if (_caret == 0) return true;
            --_caret;
            _characters.erase(at());
            return true;
        case Key::deleteForward:
            if (_caret < _characters.size()) _characters.erase(at());
            return true;
        default:
            return moveCaret(event.key);
    }
}

// The field always has room for the caret behind the text.
Picture composeTextField(const LineEditor& editor, std::size_t width, const ScreenText& text) {
    std::vector<std::string> lines(1);
    std::size_t used = 0;
    Caret caret;
    for (std::size_t i = 0; i <= editor.characters().size(); ++i) {
        const bool isEnd = i == editor.characters().size();
        const std::string drawn = isEnd ? " " : text.plain(editor.characters()[i]);
        if (used + columns(drawn) > width) {
            lines.emplace_back();
            used = 0;
        }
        if (i == editor.caret()) caret = {lines.size() - 1, used};
        if (!isEnd) lines.back() += drawn;
        used += columns(drawn);
    }
    Picture picture;
    for (std::string& line : lines) {
        line.append(width - columns(line), ' ');
        picture.add(std::move(line), Ink::field);
    }
    picture.caret = caret;
    return picture;
}

void addTextField(Picture& picture, const LineEditor& editor, FieldRoom room, const ScreenText& text) {
    const Picture field = composeTextField(editor, room.width - 2 * fieldIndent, text);
    const std::size_t caretLine = field.caret->line;
    const std::size_t first = caretLine < room.most ? 0 : caretLine + 1 - room.most;
    const std::size_t end = std::min(field.lines.size(), first + room.most);
    picture.caret = Caret{picture.lines.size() + caretLine - first, field.caret->column + fieldIndent};
    for (std::size_t i = first; i < end; ++i)
        picture.lines.push_back(Line::of(fieldIndent, field.lines[i].text(), Ink::field));
}

}  // namespace hosts::terminal::screen
