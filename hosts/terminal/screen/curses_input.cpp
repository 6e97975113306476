// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/curses_input.h"

#include <array>
#include <climits>
#include <cstdlib>
#include <cwchar>

namespace hosts::terminal::screen {
namespace {

Event keyEvent(Key key) {
    Event event;
    event.key = key;
    return event;
}

Event decodeMouse() {
    MEVENT mouse;
    if (::getmouse(&mouse) != OK || mouse.x < 0 || mouse.y < 0) return {};
    Event event;
    event.line = static_cast<std::size_t>(mouse.y);
    event.column = static_cast<std::size_t>(mouse.x);
    if (mouse.bstate & (BUTTON1_PRESSED | BUTTON1_CLICKED)) event.key = Key::click;
    if (mouse.bstate & BUTTON4_PRESSED) event.key = Key::wheelUp;
    if (mouse.bstate & BUTTON5_PRESSED) event.key = Key::wheelDown;
    return event;
}

Event decodeFunctionKey(wint_t key) {
    switch (key) {
        case KEY_UP:
            return keyEvent(Key::up);
        case KEY_DOWN:
            return keyEvent(Key::down);
        case KEY_LEFT:
            return keyEvent(Key::left);
        case KEY_RIGHT:
            return keyEvent(Key::right);
        case KEY_PPAGE:
            return keyEvent(Key::pageUp);
        case KEY_NPAGE:
            return keyEvent(Key::pageDown);
        case KEY_HOME:
            return keyEvent(Key::home);
        case KEY_END:
            return keyEvent(Key::end);
        case KEY_ENTER:
            return keyEvent(Key::enter);
        case KEY_BACKSPACE:
            return keyEvent(Key::backspace);
        case KEY_DC:
            return keyEvent(Key::deleteForward);
        case KEY_BTAB:
            return keyEvent(Key::backTab);
        case KEY_MOUSE:
            return decodeMouse();
        default:
            return {};
    }
}

// In UTF-8, or nothing in a locale that is not UTF-8 and for a character beyond ASCII.
Event decodeCharacter(wint_t character) {
    Event event;
    std::array<char, MB_LEN_MAX> bytes;
    std::mbstate_t state{};
    const std::size_t length = std::wcrtomb(bytes.data(), static_cast<wchar_t>(character), &state);
    const bool isAscii = character < 0x80;
    if (length == static_cast<std::size_t>(-1) || (!isAscii && length < 2)) return event;
    event.key = Key::character;
    event.character.assign(bytes.data(), length);
    return event;
}

}  // namespace

Event decodeKey(int status, wint_t key) {
    constexpr wint_t escape = 0x1B;
    constexpr wint_t erase = 0x7F;
    constexpr wint_t firstPrintable = 0x20;
    if (status == KEY_CODE_YES) return decodeFunctionKey(key);
    if (key == '\r' || key == '\n') return keyEvent(Key::enter);
    if (key == '\t') return keyEvent(Key::tab);
    if (key == escape) return keyEvent(Key::escape);
    if (key == erase || key == '\b') return keyEvent(Key::backspace);
    const bool isControl = key < firstPrintable || (key > erase && key < 0xA0);
    return isControl ? Event{} : decodeCharacter(key);
}

}  // namespace hosts::terminal::screen
