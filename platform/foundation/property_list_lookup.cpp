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
using property_list::Fault;
using property_list::XmlLookup;
using property_list::XmlText;

/// Calls the function with a lookup in the file, of either format; the default result is for files
/// that are malformed.
template <class Result, class Find>
Result withLookup(std::string_view bytes, Find find) {
    Fault fault;
    if (property_list::isBinary(bytes)) {
        const std::optional<BinaryLayout> layout = property_list::readValidLayout(bytes, fault);
        return layout ? find(BinaryLookup(*layout)) : Result();
    }
    const std::optional<XmlText> text = XmlText::decode(bytes, fault);
    return text ? find(XmlLookup(text->utf8())) : Result();
}

using Verdict = PropertyListLookup::Verdict;
using NestedVerdict = PropertyListNestedLookup::Verdict;

/// The verdict of a nested lookup that one of its two keys decides; `noDictionary` and `absent` are
/// what these verdicts mean for that key.
NestedVerdict nestedVerdict(Verdict verdict, NestedVerdict noDictionary, NestedVerdict absent) {
    switch (verdict) {
        case Verdict::malformed:
            return NestedVerdict::malformed;
        case Verdict::noDictionary:
            return noDictionary;
        case Verdict::absent:
            return absent;
        case Verdict::found:
            return NestedVerdict::found;
    }
    return NestedVerdict::malformed;
}

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
        const auto outer = lookup.locateInRoot(outerKey);
        if (outer.verdict != Verdict::found) {
            return {nestedVerdict(outer.verdict, NestedVerdict::noDictionary, NestedVerdict::outerAbsent), {}};
        }
        const auto inner = lookup.locateIn(outer.place, innerKey);
        if (inner.verdict != Verdict::found) {
            return {nestedVerdict(inner.verdict, NestedVerdict::outerNoDictionary, NestedVerdict::innerAbsent), {}};
        }
        return {NestedVerdict::found, lookup.value(inner.place)};
    });
}

}  // namespace platform
