// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

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

/// The low 64 bits of a big-endian number. Nearly all numbers of a binary property list take one byte or two,
/// and reading them is most of what it takes to find a key in one.
inline std::uint64_t readBigEndian(std::string_view bytes) {
    const auto at = [&](std::size_t index) -> std::uint64_t { return static_cast<unsigned char>(bytes[index]); };
    if (bytes.size() == 1) return at(0);
    if (bytes.size() == 2) return at(0) << 8 | at(1);
    std::uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

// -- Searches that look at many bytes at a time: the speed of reading is theirs -----------------

/// The characters that a search stops at, apart from everything outside ASCII.
template <char... Stops>
struct StopSet {
    static bool holds(char byte) { return static_cast<signed char>(byte) < 0 || ((byte == Stops) || ...); }

    /// The high bit of every byte that holds a stop; bits above the lowest such bit may be wrong.
    static std::uint64_t marks(std::uint64_t word) {
        [[maybe_unused]] constexpr std::uint64_t ones = 0x0101010101010101;
        constexpr std::uint64_t highs = 0x8080808080808080;
        [[maybe_unused]] const auto zeroBytes = [](std::uint64_t difference) {
            return (difference - ones) & ~difference;
        };
        return (word | ... | zeroBytes(word ^ (ones * static_cast<unsigned char>(Stops)))) & highs;
    }

#ifdef __SSE2__
    static unsigned marks(__m128i block) {
        const __m128i found = (block | ... | _mm_cmpeq_epi8(block, _mm_set1_epi8(Stops)));
        return static_cast<unsigned>(_mm_movemask_epi8(found));
    }
#endif
};

/// The first byte that is a stop or no ASCII, or `end`.
template <class Stops>
inline const char* findStop(const char* position, const char* end) {
#ifdef __SSE2__
    for (; end - position >= 16; position += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(position));
        if (const unsigned marks = Stops::marks(block)) return position + std::countr_zero(marks);
    }
#endif
    for (; end - position >= 8; position += 8) {
        if (const std::uint64_t marks = Stops::marks(loadEight(position))) {
            return position + std::countr_zero(marks) / 8;
        }
    }
    while (position != end && !Stops::holds(*position))
        ++position;
    return position;
}

inline const char* findByte(const char* position, const char* end, char wanted) {
    if (position == end) return end;
    const void* found = std::memchr(position, wanted, static_cast<std::size_t>(end - position));
    return found ? static_cast<const char*>(found) : end;
}

}  // namespace platform
