// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

/// Whether the bytes are UTF-8 without overlong forms, surrogates and values above U+10FFFF.
bool isValidUtf8(std::string_view bytes);

struct Utf8Character {
    char32_t code;
    std::size_t length;  ///< bytes that it takes in the text
};

/// The character at the front of the text, which is not empty. A byte that begins no valid sequence
/// counts for itself, as U+FFFD.
Utf8Character firstUtf8Character(std::string_view text);

}  // namespace platform
