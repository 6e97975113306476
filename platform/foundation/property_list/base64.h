// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/foundation/value.h"

namespace platform::property_list {

/// Base64 as the platform takes it: characters outside the alphabet are skipped, `=` counts as zero
/// bits, and an unfinished last group is dropped. The text is ASCII.
Data decodeBase64(std::string_view text);

/// The base64 form in lines of `lineLength` characters, a multiple of four, each line behind some
/// tabs and ended by a newline.
void appendBase64Lines(std::string& text, const Data& data, std::size_t lineLength, std::size_t tabs);

}  // namespace platform::property_list
