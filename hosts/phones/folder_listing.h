// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "hosts/system/descriptor.h"

namespace hosts {

/// More entries than any folder of a phone has, and few enough to be held at once.
constexpr std::size_t mostFolderEntries = std::size_t{1} << 18;

/// The names in a folder that is open for reading, in byte order, without "." and "..". Nothing when
/// they cannot be read or are more than `mostFolderEntries`.
std::optional<std::vector<std::string>> listNames(Descriptor folder);

}  // namespace hosts
