// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/app_list/picture.h"

namespace kit {

/// PNG's numbers of the colour types.
enum class ColourType : std::uint8_t { grey = 0, colour = 2, palette = 3, greyAlpha = 4, colourAlpha = 6 };

struct PngForm {
    ColourType type = ColourType::colourAlpha;
    int bitDepth = 8;
    bool interlaced = false;
};
void PrintTo(const PngForm& form, std::ostream* stream);

/// Encodes rows of samples as they stand in a PNG file, before filtering. A palette has all its
/// entries from `paletteColour`.
std::string encodePng(const PngForm& form, std::uint32_t width, std::uint32_t height,
                      const std::vector<std::string>& rows);

/// The palette's entry: red, green, blue and alpha.
std::vector<std::uint8_t> paletteColour(int index);

/// A picture as an ordinary PNG file, with alpha.
std::string encodePng(const hosts::Picture& picture, bool interlaced = false);

/// The phone's own form of a PNG file whose pixels are blue first and premultiplied already: marked,
/// and its data without the zlib wrapper.
std::string optimised(std::string_view png);
/// A picture in the phone's own form.
std::string encodeOptimisedPng(const hosts::Picture& picture, bool interlaced = false);

/// One chunk, with its length and check sum.
std::string chunk(std::string_view type, std::string_view content);
/// A header chunk.
std::string headerChunk(std::uint32_t width, std::uint32_t height, const PngForm& form = {});
inline constexpr std::string_view pngSignature = "\x89PNG\r\n\x1a\n";

/// `length` zero bytes, compressed; without the zlib wrapper when `raw`.
std::string compressedZeros(std::size_t length, bool raw);

/// A square of one colour, all four components given.
hosts::Picture plainPicture(std::uint32_t side, const std::vector<std::uint8_t>& pixel);
/// A picture of which no two pixels near each other are alike, some of them clear or half clear.
hosts::Picture variedPicture(std::uint32_t width, std::uint32_t height);

}  // namespace kit
