// SPDX-License-Identifier: MIT
#include "hosts/app_list/png_data.h"

#include <zlib.h>

#include <array>
#include <cstdint>

namespace hosts {
namespace {

constexpr std::size_t mostChannels = 4;

std::size_t channels(std::uint8_t colourType) {
    switch (colourType) {
        case 0:  // grey
        case 3:  // palette
            return 1;
        case 4:  // grey and alpha
            return 2;
        case 2:  // colour
            return 3;
        default:
            return mostChannels;
    }
}

std::size_t roundedUp(std::size_t length, std::size_t step) {
    return (length + step - 1) / step;
}

std::size_t rowsSize(const PngHeader& header, std::size_t width, std::size_t height) {
    if (width == 0) return 0;
    const std::size_t bits = width * channels(header.colourType) * header.bitDepth;
    return height * (1 + roundedUp(bits, 8));
}

// Where each pass of an interlaced picture starts, and how far apart its pixels are.
struct Pass {
    std::size_t x, y, stepX, stepY;
};
constexpr std::array<Pass, 7> passes = {
    {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}}};

std::size_t passLength(std::size_t side, std::size_t start, std::size_t step) {
    return side > start ? roundedUp(side - start, step) : 0;
}

/// Unpacks compressed data piece by piece and sums up what comes out.
class RawInflater {
public:
    explicit RawInflater(std::string_view raw) {
        constexpr int windowWithoutWrapper = -15;
        _isOpen = ::inflateInit2(&_stream, windowWithoutWrapper) == Z_OK;
        _stream.next_in = reinterpret_cast<const Bytef*>(raw.data());
        _stream.avail_in = static_cast<uInt>(raw.size());
    }
    RawInflater(const RawInflater&) = delete;
    RawInflater& operator=(const RawInflater&) = delete;
    ~RawInflater() {
        if (_isOpen) ::inflateEnd(&_stream);
    }

    /// The Adler-32 sum of the unpacked bytes; nothing when the data is damaged or unpacks to more
    /// than `mostUnpacked` bytes.
    std::optional<std::uint32_t> checkSum(std::size_t mostUnpacked) {
        auto sum = ::adler32(0, nullptr, 0);
        std::array<Bytef, 32768> piece;
        int status = _isOpen ? Z_OK : Z_STREAM_ERROR;
        while (status == Z_OK && _stream.total_out <= mostUnpacked) {
            _stream.next_out = piece.data();
            _stream.avail_out = piece.size();
            status = ::inflate(&_stream, Z_NO_FLUSH);
            sum = ::adler32_z(sum, piece.data(), piece.size() - _stream.avail_out);
        }
        if (status != Z_STREAM_END || _stream.total_out > mostUnpacked) return std::nullopt;
        return static_cast<std::uint32_t>(sum);
    }

private:
    z_stream _stream{};
    bool _isOpen = false;
};

}  // namespace

std::size_t unpackedSize(const PngHeader& header) {
    if (!header.interlaced) return rowsSize(header, header.width, header.height);
    std::size_t size = 0;
    for (const Pass& pass : passes) {
        size += rowsSize(header, passLength(header.width, pass.x, pass.stepX),
                         passLength(header.height, pass.y, pass.stepY));
    }
    return size;
}

std::optional<std::string> wrapRawData(std::string_view raw, std::size_t mostUnpacked) {
    const auto sum = RawInflater(raw).checkSum(mostUnpacked);
    if (!sum) return std::nullopt;
    // Compressed with deflate and a window of 32 KiB, the widest.
    std::string wrapped = "\x78\x01";
    wrapped.append(raw);
    for (int shift = 24; shift >= 0; shift -= 8) {
        wrapped += static_cast<char>(*sum >> shift & 0xFF);
    }
    return wrapped;
}

}  // namespace hosts
