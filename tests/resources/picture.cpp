// SPDX-License-Identifier: MIT
#include "picture.h"

#include <png.h>

namespace resources_test {

std::optional<Picture> readPicture(const std::filesystem::path& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, file.c_str())) return std::nullopt;

    image.format = PNG_FORMAT_RGBA;
    constexpr std::size_t channels = 4;
    std::vector<std::uint8_t> pixels(std::size_t{image.width} * image.height * channels);
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) return std::nullopt;

    Picture picture{image.width, image.height, {}};
    for (std::size_t alpha = channels - 1; alpha < pixels.size(); alpha += channels) {
        picture.opacities.push_back(pixels[alpha]);
    }
    return picture;
}

}  // namespace resources_test
