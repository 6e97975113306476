// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "platform/foundation/byte_words.h"

/// Searches that look at many bytes at a time; the speed of reading is theirs.
namespace platform::property_list {

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

}  // namespace platform::property_list
