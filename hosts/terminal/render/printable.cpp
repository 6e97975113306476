// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/printable.h"

#include <algorithm>
#include <cwchar>

#include "platform/foundation/utf8.h"

namespace hosts::terminal {
namespace {

// A line always takes one.
constexpr std::size_t widestCharacter = 2;

std::size_t columnsOf(char32_t code) {
    const int width = ::wcwidth(static_cast<wchar_t>(code));
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

// The longest start of the text that fits into `width` columns, in bytes.
std::size_t fittingLength(std::string_view text, std::size_t width) {
    std::size_t used = 0;
    std::size_t length = 0;
    while (length < text.size()) {
        const platform::Utf8Character character = platform::firstUtf8Character(text.substr(length));
        used += columnsOf(character.code);
        if (used > width) break;
        length += character.length;
    }
    return length;
}

}  // namespace

std::string inQuotes(std::string_view text) {
    constexpr std::size_t longest = 60;
    return "'" + shortened(printable(text), longest, "...") + "'";
}

std::size_t columns(std::string_view text) {
    std::size_t sum = 0;
    while (!text.empty()) {
        const platform::Utf8Character character = platform::firstUtf8Character(text);
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

std::vector<std::string> wrapped(std::string_view line, std::size_t width) {
    width = std::max(width, widestCharacter);
    std::vector<std::string> lines;
    while (true) {
        const std::size_t fitting = fittingLength(line, width);
        if (fitting == line.size()) break;
        const std::size_t space = line.rfind(' ', fitting);
        const bool atSpace = space != line.npos && space > 0;
        lines.emplace_back(line.substr(0, atSpace ? space : fitting));
        line.remove_prefix(atSpace ? space + 1 : fitting);
    }
    lines.emplace_back(line);
    return lines;
}

}  // namespace hosts::terminal
