// SPDX-License-Identifier: MIT
#include "tests/kit/png_maker.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace kit {
namespace {

void appendNumber(std::string& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
}

std::uint32_t numberAt(std::string_view bytes, std::size_t position) {
    std::uint32_t number = 0;
    for (std::size_t byte = 0; byte < 4; ++byte)
        number = number << 8 | static_cast<std::uint8_t>(bytes[position + byte]);
    return number;
}

void appendToString(png_structp png, png_bytep bytes, std::size_t length) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), length);
}

void setPalette(png_structp png, png_infop info, int bitDepth) {
    const int entries = 1 << bitDepth;
    std::vector<png_color> colours;
    std::vector<png_byte> opacities;
    for (int index = 0; index < entries; ++index) {
        const auto colour = paletteColour(index);
        colours.push_back({colour[0], colour[1], colour[2]});
        opacities.push_back(colour[3]);
    }
    png_set_PLTE(png, info, colours.data(), entries);
    png_set_tRNS(png, info, opacities.data(), entries, nullptr);
}

}  // namespace

void PrintTo(const PngForm& form, std::ostream* stream) {
    *stream << "type " << static_cast<int>(form.type) << ", " << form.bitDepth << " bits"
            << (form.interlaced ? ", interlaced" : "");
}

std::vector<std::uint8_t> paletteColour(int index) {
    const auto byte = [](int number) { return static_cast<std::uint8_t>(number & 0xFF); };
    return {byte(index * 7 + 1), byte(index * 31 + 2), byte(index * 101 + 3), byte(255 - index)};
}

std::string encodePng(const PngForm& form, std::uint32_t width, std::uint32_t height,
                      const std::vector<std::string>& rows) {
    std::string file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, appendToString, nullptr);
    png_set_IHDR(png, info, width, height, form.bitDepth, static_cast<int>(form.type),
                 form.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (form.type == ColourType::palette) setPalette(png, info, form.bitDepth);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_ALL_FILTERS);
    png_write_info(png, info);
    const int passes = png_set_interlace_handling(png);
    for (int pass = 0; pass < passes; ++pass) {
        for (const std::string& row : rows)
            png_write_row(png, reinterpret_cast<const png_byte*>(row.data()));
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

std::string encodePng(const hosts::Picture& picture, bool interlaced) {
    std::vector<std::string> rows;
    const std::size_t rowBytes = std::size_t{4} * picture.width;
    for (std::size_t row = 0; row < picture.height; ++row)
        rows.emplace_back(reinterpret_cast<const char*>(&picture.rgba[row * rowBytes]), rowBytes);
    return encodePng({ColourType::colourAlpha, 8, interlaced}, picture.width, picture.height, rows);
}

std::string chunk(std::string_view type, std::string_view content) {
    std::string bytes;
    appendNumber(bytes, static_cast<std::uint32_t>(content.size()));
    bytes.append(type).append(content);
    const auto summed = std::string_view(bytes).substr(4);
    appendNumber(
        bytes, static_cast<std::uint32_t>(::crc32_z(0, reinterpret_cast<const Bytef*>(summed.data()), summed.size())));
    return bytes;
}

std::string headerChunk(std::uint32_t width, std::uint32_t height, const PngForm& form) {
    std::string content;
    appendNumber(content, width);
    appendNumber(content, height);
    content += static_cast<char>(form.bitDepth);
    content += static_cast<char>(form.type);
    content += '\0';
    content += '\0';
    content += static_cast<char>(form.interlaced);
    return chunk("IHDR", content);
}

std::string optimised(std::string_view png) {
    constexpr std::size_t frame = 12;
    std::string file(pngSignature);
    file += chunk("CgBI", std::string_view("\x50\x00\x20\x02", 4));
    std::string data;
    for (std::size_t position = pngSignature.size(); position < png.size();) {
        const std::uint32_t length = numberAt(png, position);
        const std::string_view type = png.substr(position + 4, 4);
        if (type == "IDAT") data.append(png.substr(position + 8, length));
        if (type == "IEND") file += chunk("IDAT", std::string_view(data).substr(2, data.size() - 2 - 4));
        if (type != "IDAT") file.append(png.substr(position, length + frame));
        position += length + frame;
    }
    return file;
}

std::string encodeOptimisedPng(const hosts::Picture& picture, bool interlaced) {
    hosts::Picture stored = picture;
    for (std::size_t pixel = 0; pixel < stored.rgba.size(); pixel += 4) {
        const unsigned alpha = stored.rgba[pixel + 3];
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const unsigned component = stored.rgba[pixel + channel];
            stored.rgba[pixel + channel] = static_cast<std::uint8_t>((component * alpha + 127) / 255);
        }
        std::swap(stored.rgba[pixel], stored.rgba[pixel + 2]);
    }
    return optimised(encodePng(stored, interlaced));
}

std::string compressedZeros(std::size_t length, bool raw) {
    constexpr int window = 15;
    constexpr int memoryLevel = 8;
    z_stream stream{};
    if (::deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, raw ? -window : window, memoryLevel,
                       Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("no compressor");
    }
    std::array<Bytef, 65536> zeros{};
    std::array<Bytef, 65536> piece;
    std::string compressed;
    for (int status = Z_OK; status != Z_STREAM_END;) {
        if (stream.avail_in == 0) {
            stream.next_in = zeros.data();
            stream.avail_in = static_cast<uInt>(std::min(zeros.size(), length));
            length -= stream.avail_in;
        }
        stream.next_out = piece.data();
        stream.avail_out = piece.size();
        status = ::deflate(&stream, length == 0 ? Z_FINISH : Z_NO_FLUSH);
        compressed.append(reinterpret_cast<const char*>(piece.data()), piece.size() - stream.avail_out);
    }
    ::deflateEnd(&stream);
    return compressed;
}

hosts::Picture plainPicture(std::uint32_t side, const std::vector<std::uint8_t>& pixel) {
    hosts::Picture picture{side, side, {}};
    for (std::size_t count = 0; count < std::size_t{side} * side; ++count)
        picture.rgba.insert(picture.rgba.end(), pixel.begin(), pixel.end());
    return picture;
}

hosts::Picture variedPicture(std::uint32_t width, std::uint32_t height) {
    constexpr std::array<std::uint8_t, 5> opacities = {255, 0, 128, 254, 40};
    hosts::Picture picture{width, height, {}};
    for (std::uint32_t row = 0; row < height; ++row) {
        for (std::uint32_t column = 0; column < width; ++column) {
            const std::uint32_t mixed = row * 37 + column * 101;
            for (const std::uint32_t component : {mixed, mixed * 3 + 50, row * 11 + column})
                picture.rgba.push_back(static_cast<std::uint8_t>(component & 0xFF));
            picture.rgba.push_back(opacities[(row + column) % opacities.size()]);
        }
    }
    return picture;
}

}  // namespace kit
