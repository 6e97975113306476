// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/foundation/bytes.h"

namespace platform::property_list {

enum class Element : std::uint8_t {
    unknown,
    plist,
    dictionary,
    array,
    key,
    string,
    data,
    date,
    isTrue,
    isFalse,
    integer,
    real,
};

struct Tag {
    Element element = Element::unknown;
    bool selfClosing = false;
};

struct TagReading {
    Tag tag;
    const char* end = nullptr;  ///< behind the tag's `>`
};

/// The tag at the `<` where `begin` points, in any spelling: the name ends at a blank, at the `>` or
/// at the `/` right before it; attributes are skipped to the first `>`.
TagReading readUnusualTag(const char* begin, const char* end);

/// What is wrong with a tag of an unknown element.
std::string describeBadTag(const char* begin, const char* end);

namespace tag_spellings {

/// A tag without its `<`, as eight bytes read from a file would hold it.
struct Spelling {
    std::uint64_t bits = 0;
    std::uint64_t mask = 0;
    std::size_t length = 0;
    Tag tag;

    constexpr Spelling(std::string_view text, Tag meaning) : length(text.size() + 1), tag(meaning) {
        for (std::size_t index = 0; index < text.size(); ++index) {
            bits |= std::uint64_t{static_cast<unsigned char>(text[index])} << (8 * index);
            mask |= std::uint64_t{0xFF} << (8 * index);
        }
    }
};

/// As the platform writes them, the most frequent first.
inline constexpr Spelling usual[] = {
    {"key>", {Element::key, false}},         {"true/>", {Element::isTrue, true}},
    {"string>", {Element::string, false}},   {"false/>", {Element::isFalse, true}},
    {"integer>", {Element::integer, false}}, {"dict>", {Element::dictionary, false}},
    {"array>", {Element::array, false}},
};

}  // namespace tag_spellings

inline TagReading readOpeningTag(const char* begin, const char* end) {
    if (end - begin >= 9) {
        const std::uint64_t bytes = loadEight(begin + 1);
        for (const tag_spellings::Spelling& spelling : tag_spellings::usual) {
            if ((bytes & spelling.mask) == spelling.bits) return {spelling.tag, begin + spelling.length};
        }
    }
    return readUnusualTag(begin, end);
}

}  // namespace platform::property_list
