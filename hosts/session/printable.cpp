// SPDX-License-Identifier: MIT
#include "hosts/session/printable.h"

#include <algorithm>
#include <cwchar>

#include "platform/foundation/utf8.h"

namespace hosts {
namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr std::string_view replacementText = "\xEF\xBF\xBD";

std::string withoutSteering(std::string_view text, std::string_view kept) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const platform::Utf8Character character = platform::firstUtf8Character(text);
        const bool isKept = kept.find(text[0]) != kept.npos;
        const bool isBad = character.code == replacement || isSteering(character.code);
        result += isBad && !isKept ? replacementText : text.substr(0, character.length);
        text.remove_prefix(character.length);
    }
    return result;
}

std::size_t columnsOf(char32_t code) {
    const int width = ::wcwidth(static_cast<wchar_t>(code));
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

}  // namespace

bool isSteering(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029 ||
           (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string printable(std::string_view text) {
    return withoutSteering(text, {});
}

std::string printableLines(std::string_view text) {
    return withoutSteering(text, "\n\t");
}

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

}  // namespace hosts
