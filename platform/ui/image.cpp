// SPDX-License-Identifier: MIT
#include "platform/ui/image.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/foundation/bundle.h"
#include "platform/foundation/bytes.h"
#include "platform/foundation/system_file.h"

namespace platform {
namespace {

// A PNG file begins with its signature and the header chunk: length, "IHDR", width, height.
constexpr std::string_view pngSignature("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
constexpr std::size_t widthOffset = 16;
constexpr std::size_t heightOffset = 20;
constexpr std::size_t headerSize = 24;

constexpr std::size_t bytesPerPixel = 4;

std::uint32_t bigEndian32(std::string_view bytes, std::size_t offset) {
    return static_cast<std::uint32_t>(readBigEndian(bytes.substr(offset, 4)));
}

}  // namespace

std::shared_ptr<const UIImage> UIImage::imageNamed_inBundle(std::string_view name, const NSBundle& bundle,
                                                            double scale) {
    const long wanted = std::clamp(std::lround(scale), 1L, 3L);
    // Where that one is missing, the finest of the others: a picture made smaller stays sharp.
    for (const long candidate : {wanted, 3L, 2L, 1L}) {
        const std::string suffix = candidate == 1 ? "" : "@" + std::to_string(candidate) + "x";
        auto file = bundle.pathForResource_ofType(std::string(name) + suffix, "png");
        auto image = file ? fromPngFile(std::string(name), *std::move(file), static_cast<double>(candidate)) : nullptr;
        if (image) return image;
    }
    return nullptr;
}

std::shared_ptr<const UIImage> UIImage::fromPngFile(std::string name, std::string file, double scale) {
    auto header = readSystemFile(file, headerSize);
    if (!header || header->size() < headerSize || !header->starts_with(pngSignature)) return nullptr;
    std::shared_ptr<UIImage> image(new UIImage);
    image->_name = std::move(name);
    image->_file = std::move(file);
    image->_pixelWidth = bigEndian32(*header, widthOffset);
    image->_pixelHeight = bigEndian32(*header, heightOffset);
    image->_scale = scale;
    return image;
}

std::shared_ptr<const UIImage> UIImage::fromPixels(std::string name, std::uint32_t width, std::uint32_t height,
                                                   std::vector<std::uint8_t> rgba, double scale) {
    if (rgba.size() % bytesPerPixel != 0 || rgba.size() / bytesPerPixel != std::uint64_t{width} * height)
        return nullptr;
    std::shared_ptr<UIImage> image(new UIImage);
    image->_name = std::move(name);
    image->_rgba = std::move(rgba);
    image->_pixelWidth = width;
    image->_pixelHeight = height;
    image->_scale = scale;
    return image;
}

}  // namespace platform
