// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/foundation/export.h"

namespace platform {

/// Reads a file of the machine itself (not of the phone), a pipe or a device too, to its end or its first
/// `limit` bytes; nothing when it cannot be read.
TRIVEL3_PLATFORM_EXPORT std::optional<std::string> readSystemFile(const std::string& path,
                                                                  std::size_t limit = SIZE_MAX);

}  // namespace platform
