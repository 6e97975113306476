// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace hosts {

/// Pixels of four bytes: red, green, blue and alpha, not premultiplied; rows from the top. Neither
/// side is 0.
struct Picture {
    static constexpr std::size_t bytesPerPixel = 4;

    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint8_t> rgba;  ///< width × height × 4 bytes
};

/// Fits a picture into a square of at most `side` pixels a side: it keeps its shape, in the middle of
/// clear ground, and is made smaller where it must be, each new pixel being the mean of the area that
/// it covers. A picture that is smaller than the square gives a smaller square.
Picture fitIntoSquare(Picture picture, std::uint32_t side);

}  // namespace hosts
