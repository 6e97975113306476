// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/screen_text.h"

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <iterator>

#include "hosts/terminal/render/printable.h"
#include "platform/foundation/utf8.h"

namespace hosts::terminal {
namespace {

constexpr std::size_t usualWidth = 80;
constexpr std::size_t leastWidth = 40;
// Lines longer than this are hard to read, however wide the terminal is.
constexpr std::size_t mostWidth = 100;

std::size_t terminalWidth() {
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
    const char* configured = std::getenv("COLUMNS");
    const unsigned long number = configured ? std::strtoul(configured, nullptr, 10) : 0;
    return number > 0 ? number : usualWidth;
}

constexpr Glyphs unicodeGlyphs{
    .marker = "▸",
    .check = "✓",
    .changed = "•",
    .link = "›",
    .back = "‹",
    .heart = "♥",
    .switchOn = " on ━━●",
    .switchOff = "off ●──",
    .ellipsis = "…",
    .times = "×",
    .scrollThumb = "┃",
    .scrollTrack = "│",
    .upDownKeys = "↑↓",
    .leftKey = "←",
};

constexpr Glyphs asciiGlyphs{
    .marker = ">",
    .check = "*",
    .changed = "~",
    .link = ">",
    .back = "<",
    .heart = "<3",
    .switchOn = "[ on]",
    .switchOff = "[off]",
    .ellipsis = "...",
    .times = "x",
    .scrollThumb = "#",
    .scrollTrack = "|",
    .upDownKeys = "Up/Down",
    .leftKey = "Left",
};

constexpr Glyphs printedGlyphs = [] {
    Glyphs glyphs = unicodeGlyphs;
    glyphs.switchOn = asciiGlyphs.switchOn;
    glyphs.switchOff = asciiGlyphs.switchOff;
    return glyphs;
}();

struct Spelling {
    std::string_view character;
    std::string_view ascii;
};

constexpr Spelling spellings[] = {{"‘", "'"}, {"’", "'"},   {"“", "\""}, {"”", "\""},     {"–", "-"},
                                  {"—", "-"}, {"…", "..."}, {"•", "*"},  {"\u00A0", " "}, {"×", "x"}};

// How plain ASCII spells the character; it is one.
std::string_view asciiOf(std::string_view character) {
    if (character.size() == 1) return character;
    const auto found = std::ranges::find(spellings, character, &Spelling::character);
    return found == std::end(spellings) ? "?" : found->ascii;
}

// What makes one picture of the characters around it: joiners, variation selectors, skin tones, the frame of a key and
// the tags of flags.
bool joins(char32_t code) {
    return code == 0x200D || code == 0x20E3 || (code >= 0xFE00 && code <= 0xFE0F) ||
           (code >= 0x1F3FB && code <= 0x1F3FF) || (code >= 0xE0020 && code <= 0xE007F);
}

// Terminals differ in how many columns such a picture takes; its parts alone take the same on all of them. Where the
// terminal took fewer than were counted, the rest of its line would stand in the wrong place and leave traces.
std::string apart(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const platform::Utf8Character character = platform::firstUtf8Character(text);
        if (!joins(character.code)) result += text.substr(0, character.length);
        text.remove_prefix(character.length);
    }
    return result;
}

std::string inAscii(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t length = platform::firstUtf8Character(text).length;
        result += asciiOf(text.substr(0, length));
        text.remove_prefix(length);
    }
    return result;
}

// Of standard output.
bool suitsColour() {
    const bool terminal = ::isatty(STDOUT_FILENO) == 1;
    const char* kind = std::getenv("TERM");
    const char* noColour = std::getenv("NO_COLOR");
    const bool dumb = !kind || std::string_view(kind) == "dumb";
    return terminal && !dumb && (!noColour || !*noColour);
}

}  // namespace

TextStyle styleForStandardOutput(ColourUse colour) {
    std::setlocale(LC_CTYPE, "");
    TextStyle style;
    style.width = std::clamp(terminalWidth(), leastWidth, mostWidth);
    style.colour = colour == ColourUse::always || (colour == ColourUse::automatic && suitsColour());
    style.unicode = std::string_view(::nl_langinfo(CODESET)) == "UTF-8";
    // Labels are UTF-8 whatever the terminal shows, and so are their widths.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    return style;
}

ScreenText::ScreenText(const TextStyle& style)
    : ScreenText(style.unicode ? unicodeGlyphs : asciiGlyphs, !style.unicode, false) {}

ScreenText ScreenText::forPrinting(const TextStyle& style) {
    return {style.unicode ? printedGlyphs : asciiGlyphs, !style.unicode, true};
}

std::string ScreenText::plain(std::string_view text) const {
    std::string result = printable(text);
    if (!_keepsJoined) result = apart(result);
    return _isAscii ? inAscii(result) : result;
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

}  // namespace hosts::terminal
