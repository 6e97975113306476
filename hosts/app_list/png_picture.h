// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "hosts/app_list/picture.h"

namespace hosts {

/// What a PNG file says of itself at its beginning. Both sides are from 1 to `longestPngSide`.
struct PngHeader {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint8_t bitDepth = 0;
    std::uint8_t colourType = 0;  ///< as numbered in the file
    bool interlaced = false;
    /// Whether the file is in the phone's own form: marked by a CgBI chunk, its compressed data
    /// without the zlib wrapper, its pixels blue first and premultiplied.
    bool optimised = false;
};

inline constexpr std::uint32_t longestPngSide = 4096;

/// Nothing when the bytes do not begin as a PNG file does, or its sides are out of range.
std::optional<PngHeader> readPngHeader(std::string_view file);

/// Decodes a PNG file of any colour type, bit depth and interlacing, or one in the phone's optimised
/// form. Colours are taken as they are; gamma and profiles are not applied. Nothing when it is no PNG
/// file, is cut short or damaged, or has a side longer than `longestPngSide`.
///
/// Takes time in proportion to the file and the pixels, and no memory for pixels before their number
/// is known to be in range.
std::optional<Picture> decodePng(std::string_view file);

}  // namespace hosts
