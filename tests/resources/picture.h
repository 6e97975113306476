// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace resources_test {

/// A decoded picture: its size in pixels and one opacity for each pixel, row by row (0 clear, 255
/// opaque).
struct Picture {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<std::uint8_t> opacities;

    std::uint8_t opacityAt(std::size_t column, std::size_t row) const { return opacities[row * width + column]; }
};

/// Decodes a whole PNG file; nothing when it is missing or damaged.
std::optional<Picture> readPicture(const std::filesystem::path& file);

}  // namespace resources_test
