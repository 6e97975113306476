// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

    bool hasColour() const { return colourType == 2 || colourType == 6; }
    bool hasAlpha() const { return colourType == 4 || colourType == 6; }
};

inline constexpr std::uint32_t longestPngSide = 4096;

/// Nothing when the bytes do not begin as a PNG file does, or its sides are out of range.
std::optional<PngHeader> readPngHeader(std::string_view file);

/// The parts of a PNG file that make up its picture. Everything else that it holds, texts and colour
/// profiles that unfold to any size, is left behind.
class PngFile {
public:
    /// Nothing when the file is no PNG file, cut short, or damaged in one of those parts. They refer
    /// to `file`.
    static std::optional<PngFile> split(std::string_view file);

    const PngHeader& header() const { return _header; }

    /// A PNG file of these parts that any decoder reads; the pixels of an optimised one are still
    /// blue first and premultiplied. Nothing when the data of an optimised file is damaged.
    std::optional<std::string> standardForm() const;

private:
    PngHeader _header;
    std::vector<std::string_view> _headChunks;  ///< whole: length, type, content and check sum
    std::vector<std::string_view> _dataChunks;  ///< whole
};

}  // namespace hosts
