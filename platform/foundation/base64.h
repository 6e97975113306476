// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/export.h"
#include "platform/foundation/value.h"

namespace platform {

/// Base64 as the platform takes it: characters outside the alphabet are skipped, `=` counts as zero
/// bits, and an unfinished last group is dropped.
TRIVEL3_PLATFORM_EXPORT Data decodeBase64(std::string_view text);

/// Appends the base64 form, padded to whole groups of four characters.
TRIVEL3_PLATFORM_EXPORT void appendBase64(std::string& text, std::span<const std::byte> bytes);

/// Appends it in lines of `lineLength` characters, a multiple of four, each line behind some tabs and
/// ended by a newline.
TRIVEL3_PLATFORM_EXPORT void appendBase64Lines(std::string& text, std::span<const std::byte> bytes,
                                               std::size_t lineLength, std::size_t tabs);

}  // namespace platform
