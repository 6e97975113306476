// SPDX-License-Identifier: MIT
#include <optional>
#include <span>
#include <string_view>

#include "platform/foundation/property_list.h"
#include "platform/foundation/property_list/binary_lookup.h"
#include "platform/foundation/property_list/binary_validator.h"
#include "platform/foundation/property_list/xml_encoding.h"
#include "platform/foundation/property_list/xml_lookup.h"

namespace platform {

namespace {

using property_list::BinaryLayout;
using property_list::BinaryLookup;
using property_list::XmlLookup;
using property_list::XmlText;

/// Calls the function with a lookup in the file, of either format; the default result is for files
/// that are malformed.
template <class Result, class Find>
Result withLookup(std::string_view bytes, Find find) {
    PropertyListError fault;
    if (property_list::isBinary(bytes)) {
        const std::optional<BinaryLayout> layout = property_list::readValidLayout(bytes, fault);
        return layout ? find(BinaryLookup(*layout)) : Result();
    }
    const std::optional<XmlText> text = XmlText::decode(bytes, fault);
    return text ? find(XmlLookup(text->utf8())) : Result();
}

using Verdict = PropertyListLookup::Verdict;
using NestedVerdict = PropertyListNestedLookup::Verdict;

}  // namespace

PropertyListLookup lookUpRootKey(std::string_view bytes, std::string_view key) {
    return withLookup<PropertyListLookup>(bytes, [&](const auto& lookup) -> PropertyListLookup {
        const auto located = lookup.locateInRoot(key);
        if (located.verdict != Verdict::found) return {located.verdict, {}};
        return {Verdict::found, lookup.value(located.place)};
    });
}

std::optional<Dictionary> readRootKeys(std::string_view bytes, std::span<const std::string_view> keys) {
    return withLookup<std::optional<Dictionary>>(bytes, [&](const auto& lookup) { return lookup.readInRoot(keys); });
}

PropertyListNestedLookup lookUpNestedKey(std::string_view bytes, std::string_view outerKey, std::string_view innerKey) {
    return withLookup<PropertyListNestedLookup>(bytes, [&](const auto& lookup) -> PropertyListNestedLookup {
        const auto located = lookup.locateNested(outerKey, innerKey);
        if (located.verdict != NestedVerdict::found) return {located.verdict, {}};
        return {NestedVerdict::found, lookup.value(located.place)};
    });
}

}  // namespace platform
