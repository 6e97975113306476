// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/printable.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>

namespace hosts::terminal {
namespace {

constexpr char32_t replacement = 0xFFFD;
// No character is wider, so that a line always takes one.
constexpr std::size_t leastWidth = 2;

constexpr std::string_view replacementText = "\xEF\xBF\xBD";

struct Character {
    char32_t code;
    std::size_t length;  ///< bytes that it takes in the text
};

bool isContinuation(char byte) {
    return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80;
}

// Bytes of the sequence that a lead byte announces; 0 for a byte that leads none.
std::size_t sequenceLength(std::uint8_t lead) {
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    if (lead >= 0xF0 && lead < 0xF5) return 4;
    return 0;
}

// The character at the start of the text, which is not empty; a byte that starts none counts for itself.
Character firstCharacter(std::string_view text) {
    const auto lead = static_cast<std::uint8_t>(text[0]);
    if (lead < 0x80) return {lead, 1};
    const std::size_t length = sequenceLength(lead);
    if (length == 0 || text.size() < length) return {replacement, 1};
    char32_t code = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text[i])) return {replacement, 1};
        code = code << 6 | (static_cast<std::uint8_t>(text[i]) & 0x3Fu);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool outside = code > 0x10FFFF || (code >= 0xD800 && code < 0xE000);
    return overlong || outside ? Character{replacement, 1} : Character{code, length};
}

// Characters that steer a terminal or reorder what follows them.
bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029 ||
           (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::size_t columnsOf(char32_t code) {
    const int width = ::wcwidth(static_cast<wchar_t>(code));
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

// The longest start of the text that fits into `width` columns, in bytes.
std::size_t fittingLength(std::string_view text, std::size_t width) {
    std::size_t used = 0;
    std::size_t length = 0;
    while (length < text.size()) {
        const Character character = firstCharacter(text.substr(length));
        used += columnsOf(character.code);
        if (used > width) break;
        length += character.length;
    }
    return length;
}

void wrapLine(std::string_view line, std::size_t width, std::vector<std::string>& lines) {
    while (true) {
        const std::size_t fitting = fittingLength(line, width);
        if (fitting == line.size()) break;
        const std::size_t space = line.rfind(' ', fitting);
        const bool atSpace = space != line.npos && space > 0;
        lines.emplace_back(line.substr(0, atSpace ? space : fitting));
        line.remove_prefix(atSpace ? space + 1 : fitting);
    }
    lines.emplace_back(line);
}

}  // namespace

std::string printable(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        const bool bad = character.code == replacement || isControl(character.code);
        result += bad ? replacementText : text.substr(0, character.length);
        text.remove_prefix(character.length);
    }
    return result;
}

std::string inQuotes(std::string_view text) {
    constexpr std::size_t longest = 60;
    return "'" + shortened(printable(text), longest, "...") + "'";
}

std::size_t columns(std::string_view text) {
    std::size_t sum = 0;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        sum += columnsOf(character.code);
        text.remove_prefix(character.length);
    }
    return sum;
}

std::string shortened(std::string_view text, std::size_t most, std::string_view ellipsis) {
    if (fittingLength(text, most) == text.size()) return std::string(text);
    const std::size_t room = most - std::min(most, columns(ellipsis));
    return std::string(text.substr(0, fittingLength(text, room))).append(ellipsis);
}

std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    while (true) {
        const std::size_t end = text.find('\n');
        wrapLine(text.substr(0, end), std::max(width, leastWidth), lines);
        if (end == text.npos) return lines;
        text.remove_prefix(end + 1);
    }
}

}  // namespace hosts::terminal
