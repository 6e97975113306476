// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace platform {

/// A row of a table: both numbers from 0, the rows of each section counted for themselves.
struct NSIndexPath {
    std::size_t section = 0;
    std::size_t row = 0;
    bool operator==(const NSIndexPath&) const = default;
};

}  // namespace platform
