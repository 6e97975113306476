// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace platform {

/// Whether the bytes are UTF-8 without overlong forms, surrogates and values above U+10FFFF.
bool isValidUtf8(std::string_view bytes);

}  // namespace platform
