// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string_view>

/// Character classes of ASCII, whatever the locale.
namespace platform::property_list {

/// What may stand between elements.
constexpr bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// 16 or more for what is no hexadecimal digit.
constexpr unsigned digitValue(char character) {
    if (isDigit(character)) return static_cast<unsigned>(character - '0');
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

inline bool equalInAnyCase(std::string_view text, std::string_view lowerCase) {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(), [](char mine, char lower) {
        return (mine >= 'A' && mine <= 'Z' ? static_cast<char>(mine | 0x20) : mine) == lower;
    });
}

}  // namespace platform::property_list
