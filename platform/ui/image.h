// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/ui/geometry.h"

namespace platform {

class NSBundle;

/// A picture: either a PNG file of the system image, or pixels in memory.
class TRIVEL3_PLATFORM_EXPORT UIImage {
public:
    /// The bundle's image of that name, from the file made for the screen's scale: NAME@3x.png,
    /// NAME@2x.png or NAME.png, the best that is there. Null when there is none.
    static std::shared_ptr<const UIImage> imageNamed_inBundle(std::string_view name, const NSBundle& bundle,
                                                              double scale);

    /// Null when the file is missing or no PNG.
    static std::shared_ptr<const UIImage> fromPngFile(std::string name, std::string file, double scale);

    /// `rgba` holds width × height pixels of four bytes: red, green, blue and alpha, not
    /// premultiplied, rows from the top. Null when its length does not fit.
    static std::shared_ptr<const UIImage> fromPixels(std::string name, std::uint32_t width, std::uint32_t height,
                                                     std::vector<std::uint8_t> rgba, double scale);

    /// The name that the image was looked up by.
    const std::string& name() const { return _name; }
    /// The machine's path of the PNG file; empty for an image in memory.
    const std::string& file() const { return _file; }
    const std::vector<std::uint8_t>& rgba() const { return _rgba; }

    std::uint32_t pixelWidth() const { return _pixelWidth; }
    std::uint32_t pixelHeight() const { return _pixelHeight; }
    double scale() const { return _scale; }
    /// In points.
    CGSize size() const { return {_pixelWidth / _scale, _pixelHeight / _scale}; }

private:
    UIImage() = default;

    std::string _name;
    std::string _file;
    std::vector<std::uint8_t> _rgba;
    std::uint32_t _pixelWidth = 0;
    std::uint32_t _pixelHeight = 0;
    double _scale = 1;
};

}  // namespace platform
