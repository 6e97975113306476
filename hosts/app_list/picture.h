// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace hosts {

/// Pixels of four bytes: red, green, blue and alpha, not premultiplied; rows from the top. Neither
/// side is 0.
struct Picture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint8_t> rgba;  ///< width × height × 4 bytes
};

}  // namespace hosts
