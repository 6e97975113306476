// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform::property_list {

inline constexpr char32_t replacementCharacter = 0xFFFD;
inline constexpr char32_t greatestCharacter = 0x10FFFF;

constexpr bool isLeadSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool isTrailSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}
/// What a code point must be to be a character: within range and no surrogate.
constexpr bool isCharacter(char32_t code) {
    return code <= greatestCharacter && (code < 0xD800 || code >= 0xE000);
}

void appendUtf8(std::string& text, char32_t character);

struct Utf8Sequence {
    char32_t character = 0;
    std::size_t length = 0;
};

/// The sequence at the front of the text, which is not empty; of length 0 when no valid one stands there.
Utf8Sequence firstSequence(std::string_view text);

/// Where the first byte stands that is no part of valid UTF-8, or the size of the text. Overlong
/// forms, surrogates and values above U+10FFFF are not valid.
std::size_t findInvalidUtf8(std::string_view text);

inline bool isValidUtf8(std::string_view text) {
    return findInvalidUtf8(text) == text.size();
}

bool isAscii(std::string_view text);

std::string utf8FromLatin1(std::string_view bytes);

/// Big-endian UTF-16, an even number of bytes. A surrogate without its partner becomes U+FFFD.
std::string utf8FromUtf16(std::string_view bytes);

/// How many units of UTF-16 valid UTF-8 makes.
std::size_t utf16Length(std::string_view text);

/// Appends big-endian UTF-16 of valid UTF-8.
void appendUtf16FromUtf8(std::string& bytes, std::string_view text);

}  // namespace platform::property_list
