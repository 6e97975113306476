// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_tags.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/foundation/ascii.h"
#include "platform/foundation/bytes.h"

namespace platform::property_list {

namespace {

constexpr std::array<std::pair<std::string_view, Element>, 11> elementNames{{
    {"plist", Element::plist},
    {"dict", Element::dictionary},
    {"array", Element::array},
    {"key", Element::key},
    {"string", Element::string},
    {"data", Element::data},
    {"date", Element::date},
    {"true", Element::isTrue},
    {"false", Element::isFalse},
    {"integer", Element::integer},
    {"real", Element::real},
}};

Element elementCalled(std::string_view name) {
    const auto known = std::find_if(elementNames.begin(), elementNames.end(),
                                    [&](const auto& candidate) { return candidate.first == name; });
    return known == elementNames.end() ? Element::unknown : known->second;
}

std::string_view nameIn(std::string_view tag) {
    return tag.substr(0, static_cast<std::size_t>(std::find_if(tag.begin(), tag.end(), isBlank) - tag.begin()));
}

}  // namespace

TagReading readUnusualTag(const char* begin, const char* end) {
    const char* const close = findByte(begin, end, '>');
    if (close == end) return {};
    std::string_view tag(begin + 1, static_cast<std::size_t>(close - begin - 1));
    const bool selfClosing = tag.ends_with('/');
    if (selfClosing) tag.remove_suffix(1);
    return {{elementCalled(nameIn(tag)), selfClosing}, close + 1};
}

std::string describeBadTag(const char* begin, const char* end) {
    const char* const close = findByte(begin, end, '>');
    if (close == end) return "the file ends inside a tag";
    const std::string_view name = nameIn({begin + 1, static_cast<std::size_t>(close - begin - 1)});
    if (name.empty()) return "a tag without a name";
    constexpr std::size_t longestShown = 40;
    std::string shown(name.substr(0, longestShown));
    std::replace_if(
        shown.begin(), shown.end(), [](char character) { return character < ' ' || character > '~'; }, '?');
    return "unknown tag <" + shown + (name.size() > longestShown ? "…>" : ">");
}

}  // namespace platform::property_list
