// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "platform/foundation/value.h"

namespace hosts {

/// Reads a strings file: a property list, or the old text form, one `"key" = "value";` after the
/// other, with comments, in UTF-8 or UTF-16. An entry without a value (`"key";`) stands for itself;
/// of two entries with one key the last counts. Nothing for a file that is malformed anywhere.
///
/// Takes time and memory in proportion to the file.
std::optional<platform::Dictionary> readStringsFile(std::string_view bytes);

}  // namespace hosts
