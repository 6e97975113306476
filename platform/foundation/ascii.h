// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string_view>

/// Character classes of ASCII, whatever the locale.
namespace platform {

/// The blanks of XML.
constexpr bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr char lowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character | 0x20) : character;
}

constexpr bool isLetter(char character) {
    return lowerCase(character) >= 'a' && lowerCase(character) <= 'z';
}

/// 16 or more for what is no hexadecimal digit.
constexpr unsigned digitValue(char character) {
    if (isDigit(character)) return static_cast<unsigned>(character - '0');
    const char lower = lowerCase(character);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

/// The text without the blanks around it.
constexpr std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

inline bool equalInAnyCase(std::string_view text, std::string_view other) {
    return std::equal(text.begin(), text.end(), other.begin(), other.end(),
                      [](char mine, char theirs) { return lowerCase(mine) == lowerCase(theirs); });
}

}  // namespace platform
