// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "hosts/app_list/picture.h"

namespace hosts {

/// Fits a picture into a square of at most `side` pixels a side: it keeps its shape, in the middle of
/// clear ground, and is made smaller where it must be, each new pixel being the mean of the area that
/// it covers. A picture that is smaller than the square gives a smaller square.
Picture fitIntoSquare(Picture picture, std::uint32_t side);

}  // namespace hosts
