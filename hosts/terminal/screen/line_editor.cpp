// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/line_editor.h"

#include <algorithm>

namespace hosts::terminal::screen {
namespace {

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

LineEditor::LineEditor(std::string_view text) {
    for (const char byte : text) {
        if (!continuesCharacter(byte) || _characters.empty()) _characters.emplace_back();
        _characters.back() += byte;
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

}  // namespace hosts::terminal::screen
