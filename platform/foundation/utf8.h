// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/foundation/export.h"

namespace platform {

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

TRIVEL3_PLATFORM_EXPORT void appendUtf8(std::string& text, char32_t character);

struct Utf8Character {
    char32_t code;
    std::size_t length;  ///< bytes that it takes in the text
};

/// The character at the front of the text, which is not empty. A byte that begins no valid sequence
/// counts for itself, as U+FFFD.
TRIVEL3_PLATFORM_EXPORT Utf8Character firstUtf8Character(std::string_view text);

/// Whether the byte goes on with a character that another one has begun.
constexpr bool isUtf8Continuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// Where the first byte stands that is no part of valid UTF-8, or the size of the text. Overlong
/// forms, surrogates and values above U+10FFFF are not valid.
TRIVEL3_PLATFORM_EXPORT std::size_t findInvalidUtf8(std::string_view text);

inline bool isValidUtf8(std::string_view text) {
    return findInvalidUtf8(text) == text.size();
}

TRIVEL3_PLATFORM_EXPORT bool isAscii(std::string_view text);

TRIVEL3_PLATFORM_EXPORT std::string utf8FromLatin1(std::string_view bytes);

/// Big-endian UTF-16, an even number of bytes. A surrogate without its partner becomes U+FFFD.
TRIVEL3_PLATFORM_EXPORT std::string utf8FromUtf16(std::string_view bytes);

/// How many units of UTF-16 valid UTF-8 makes.
TRIVEL3_PLATFORM_EXPORT std::size_t utf16Length(std::string_view text);

/// Appends big-endian UTF-16 of valid UTF-8.
TRIVEL3_PLATFORM_EXPORT void appendUtf16FromUtf8(std::string& bytes, std::string_view text);

}  // namespace platform
