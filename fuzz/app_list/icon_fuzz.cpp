// SPDX-License-Identifier: MIT
// Any bytes at all as an icon, in the ordinary and in the phone's own form. Their check sums are made
// right first: else next to nothing would get past them.
#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "hosts/app_list/picture.h"
#include "hosts/app_list/png_picture.h"

namespace {

constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
constexpr std::size_t frame = 12;
// What a picture may have before decoding it takes more time than it finds faults.
constexpr std::uint32_t mostPixels = 1 << 20;

std::uint32_t numberAt(std::string_view bytes, std::size_t position) {
    std::uint32_t number = 0;
    for (std::size_t byte = 0; byte < 4; ++byte)
        number = number << 8 | static_cast<std::uint8_t>(bytes[position + byte]);
    return number;
}

std::string encoded(std::uint32_t number) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
    return bytes;
}

std::string chunk(std::string_view type, std::string_view content) {
    const std::string summed = std::string(type).append(content);
    const auto sum = ::crc32_z(0, reinterpret_cast<const Bytef*>(summed.data()), summed.size());
    return encoded(static_cast<std::uint32_t>(content.size())) + summed + encoded(static_cast<std::uint32_t>(sum));
}

/// The chunks of the file with right check sums. The last is cut to what is there.
std::string repaired(std::string_view file) {
    std::string whole;
    while (file.size() >= frame) {
        const std::size_t length = std::min<std::size_t>(numberAt(file, 0), file.size() - frame);
        whole += chunk(file.substr(4, 4), file.substr(8, length));
        file.remove_prefix(length + frame);
    }
    return whole;
}

bool isSmall(std::string_view chunks) {
    return chunks.size() < 16 || std::uint64_t{numberAt(chunks, 8)} * numberAt(chunks, 12) <= mostPixels;
}

void decode(const std::string& file) {
    constexpr std::uint32_t side = 58;
    auto picture = hosts::decodePng(file);
    if (!picture) return;
    if (picture->rgba.size() != std::size_t{4} * picture->width * picture->height) std::abort();
    const hosts::Picture icon = hosts::fitIntoSquare(std::move(*picture), side);
    if (icon.width != icon.height || icon.width > side || icon.width == 0) std::abort();
    if (icon.rgba.size() != std::size_t{4} * icon.width * icon.height) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view file(reinterpret_cast<const char*>(data), size);
    if (file.starts_with(signature)) file.remove_prefix(signature.size());
    const std::string chunks = repaired(file);
    if (!isSmall(chunks)) return 0;
    decode(std::string(signature) + chunks);
    decode(std::string(signature) + chunk("CgBI", {}) + chunks);
    return 0;
}
