// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace platform::property_list {

/// How deep containers that hold something may nest. An empty one may stand one level deeper, since
/// it can be written without opening it. What nests deeper is neither read nor written, in either
/// format, so that whatever can be read can be written and read again.
inline constexpr std::size_t greatestDepth = 512;
inline constexpr const char* tooDeep = "more than 512 nested containers";

}  // namespace platform::property_list
