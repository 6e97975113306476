// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform::property_list {

/// The low 64 bits of a big-endian number. Nearly all numbers of a settings file take one byte or two,
/// and reading them is most of what it takes to find a key in one.
inline std::uint64_t readLowBits(std::string_view bytes) {
    const auto at = [&](std::size_t index) -> std::uint64_t { return static_cast<unsigned char>(bytes[index]); };
    if (bytes.size() == 1) return at(0);
    if (bytes.size() == 2) return at(0) << 8 | at(1);
    std::uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

}  // namespace platform::property_list
