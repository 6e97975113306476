// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/screen_text.h"

#include <algorithm>
#include <iterator>

#include "hosts/terminal/render/printable.h"

namespace hosts::terminal::screen {
namespace {

struct Spelling {
    std::string_view character;
    std::string_view ascii;
};

constexpr Spelling spellings[] = {{"‘", "'"}, {"’", "'"},   {"“", "\""}, {"”", "\""},     {"–", "-"},
                                  {"—", "-"}, {"…", "..."}, {"•", "*"},  {"\u00A0", " "}, {"×", "x"}};

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// How plain ASCII spells the character; it is one.
std::string_view asciiOf(std::string_view character) {
    const auto found = std::ranges::find(spellings, character, &Spelling::character);
    return found == std::end(spellings) ? "?" : found->ascii;
}

// The text, which is valid UTF-8, in ASCII.
std::string inAscii(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        std::size_t length = 1;
        while (length < text.size() && continuesCharacter(text[length]))
            ++length;
        result += isAscii(text[0]) ? text.substr(0, length) : asciiOf(text.substr(0, length));
        text.remove_prefix(length);
    }
    return result;
}

}  // namespace

std::string ScreenText::plain(std::string_view text) const {
    std::string result = printable(text);
    return _style.unicode ? result : inAscii(result);
}

std::string ScreenText::fitted(std::string_view text, std::size_t width) const {
    const std::string_view ellipsis = width > columns(glyphs().ellipsis) ? glyphs().ellipsis : std::string_view();
    return shortened(plain(text), width, ellipsis);
}

std::vector<std::string> ScreenText::lines(std::string_view text, std::size_t width) const {
    std::vector<std::string> all;
    while (true) {
        const std::size_t end = text.find('\n');
        std::ranges::move(wrapped(plain(text.substr(0, end)), width), std::back_inserter(all));
        if (end == text.npos) return all;
        text.remove_prefix(end + 1);
    }
}

std::vector<std::string> ScreenText::firstLines(std::string_view text, std::size_t width, std::size_t most) const {
    std::vector<std::string> all = lines(text, width);
    if (all.size() <= most) return all;
    all.resize(most);
    if (most == 0) return all;
    const std::size_t room = width - std::min(width, columns(glyphs().ellipsis));
    all.back() = shortened(all.back(), room, "").append(glyphs().ellipsis);
    return all;
}

}  // namespace hosts::terminal::screen
