// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "hosts/app_list/picture.h"

namespace hosts {

/// Decodes a PNG file of any colour type, bit depth and interlacing, or one in the phone's optimised
/// form. Colours are taken as they are; gamma and profiles are not applied. Nothing when it is no PNG
/// file, is cut short or damaged, or has a side longer than `longestPngSide`.
///
/// Takes time in proportion to the file and the pixels, and no memory for pixels before their number
/// is known to be in range.
std::optional<Picture> decodePng(std::string_view file);

}  // namespace hosts
