// SPDX-License-Identifier: MIT
#include "hosts/app_list/png_picture.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "hosts/app_list/png_file.h"

namespace hosts {
namespace {

constexpr std::size_t bytesPerPixel = 4;

/// What libpng needs to read a file from memory.
class PngReader {
public:
    explicit PngReader(std::string_view file) : _rest(file) {
        _png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignore);
        _info = _png ? png_create_info_struct(_png) : nullptr;
        if (_info) png_set_read_fn(_png, this, read);
    }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() { png_destroy_read_struct(&_png, &_info, nullptr); }

    /// Makes every kind of pixel one of four bytes, and finds the picture's size. False when the file's
    /// head is not in order.
    bool readHead();
    std::uint32_t width() const { return png_get_image_width(_png, _info); }
    std::uint32_t height() const { return png_get_image_height(_png, _info); }

    /// Reads all pixels to where the rows point. False when they are not whole.
    bool readRows(std::vector<png_bytep>& rows);

private:
    [[noreturn]] static void leave(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void ignore(png_structp, png_const_charp) {}
    static void read(png_structp png, png_bytep bytes, std::size_t length) {
        std::string_view& rest = static_cast<PngReader*>(png_get_io_ptr(png))->_rest;
        if (length > rest.size()) leave(png, nullptr);
        rest.copy(reinterpret_cast<char*>(bytes), length);
        rest.remove_prefix(length);
    }

    std::string_view _rest;
    png_structp _png = nullptr;
    png_infop _info = nullptr;
};

// libpng leaves its functions by a jump to here when it meets an error; so there must be nothing to
// destroy in these two.
bool PngReader::readHead() {
    if (!_info || setjmp(png_jmpbuf(_png))) return false;
    png_set_user_limits(_png, longestPngSide, longestPngSide);
    png_read_info(_png, _info);
    png_set_expand(_png);
    png_set_scale_16(_png);
    png_set_gray_to_rgb(_png);
    png_set_add_alpha(_png, 0xFF, PNG_FILLER_AFTER);
    png_set_interlace_handling(_png);
    png_read_update_info(_png, _info);
    return png_get_rowbytes(_png, _info) == bytesPerPixel * width();
}

bool PngReader::readRows(std::vector<png_bytep>& rows) {
    if (setjmp(png_jmpbuf(_png))) return false;
    png_read_image(_png, rows.data());
    png_read_end(_png, nullptr);
    return true;
}

std::optional<Picture> decodeStandardForm(std::string_view file) {
    PngReader reader(file);
    if (!reader.readHead()) return std::nullopt;
    Picture picture{reader.width(), reader.height(), {}};
    const std::size_t rowBytes = bytesPerPixel * picture.width;
    picture.rgba.resize(rowBytes * picture.height);
    std::vector<png_bytep> rows;
    for (std::size_t row = 0; row < picture.height; ++row) {
        rows.push_back(picture.rgba.data() + row * rowBytes);
    }
    if (!reader.readRows(rows)) return std::nullopt;
    return picture;
}

void swapRedAndBlue(Picture& picture) {
    for (std::size_t pixel = 0; pixel < picture.rgba.size(); pixel += bytesPerPixel) {
        std::swap(picture.rgba[pixel], picture.rgba[pixel + 2]);
    }
}

std::uint8_t unpremultiplied(unsigned component, unsigned alpha) {
    return static_cast<std::uint8_t>(std::min(255U, (component * 255 + alpha / 2) / alpha));
}

void unpremultiply(Picture& picture) {
    for (std::size_t pixel = 0; pixel < picture.rgba.size(); pixel += bytesPerPixel) {
        const unsigned alpha = picture.rgba[pixel + 3];
        if (alpha == 0 || alpha == 255) continue;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            picture.rgba[pixel + channel] = unpremultiplied(picture.rgba[pixel + channel], alpha);
        }
    }
}

}  // namespace

std::optional<Picture> decodePng(std::string_view file) {
    const auto parts = PngFile::split(file);
    if (!parts) return std::nullopt;
    const auto standard = parts->standardForm();
    auto picture = standard ? decodeStandardForm(*standard) : std::nullopt;
    if (picture && parts->header().optimised) {
        if (parts->header().hasColour()) swapRedAndBlue(*picture);
        if (parts->header().hasAlpha()) unpremultiply(*picture);
    }
    return picture;
}

}  // namespace hosts
