// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace platform {

/// Eight bytes, the first of them in the lowest bits whatever the machine's byte order.
inline std::uint64_t loadEight(const char* bytes) {
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    if constexpr (std::endian::native == std::endian::big) {
        std::uint64_t swapped = 0;
        for (int index = 0; index < 8; ++index)
            swapped |= (word >> (8 * index) & 0xFF) << (56 - 8 * index);
        word = swapped;
    }
    return word;
}

/// How many bytes both texts begin with.
inline std::size_t commonPrefixLength(std::string_view left, std::string_view right) {
    const std::size_t shorter = std::min(left.size(), right.size());
    std::size_t length = 0;
    for (; length + 8 <= shorter; length += 8) {
        const std::uint64_t difference = loadEight(left.data() + length) ^ loadEight(right.data() + length);
        if (difference != 0) return length + static_cast<std::size_t>(std::countr_zero(difference)) / 8;
    }
    while (length < shorter && left[length] == right[length])
        ++length;
    return length;
}

}  // namespace platform
