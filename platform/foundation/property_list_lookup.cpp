// SPDX-License-Identifier: MIT
#include <optional>
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

PropertyListNestedLookup::Verdict verdictOnOuter(PropertyListLookup::Verdict verdict) {
    switch (verdict) {
        case PropertyListLookup::Verdict::malformed:
            return PropertyListNestedLookup::Verdict::malformed;
        case PropertyListLookup::Verdict::noDictionary:
            return PropertyListNestedLookup::Verdict::noDictionary;
        case PropertyListLookup::Verdict::absent:
            return PropertyListNestedLookup::Verdict::outerAbsent;
        case PropertyListLookup::Verdict::found:
            return PropertyListNestedLookup::Verdict::found;
    }
    return PropertyListNestedLookup::Verdict::malformed;
}

PropertyListNestedLookup::Verdict verdictOnInner(PropertyListLookup::Verdict verdict) {
    switch (verdict) {
        case PropertyListLookup::Verdict::malformed:
            return PropertyListNestedLookup::Verdict::malformed;
        case PropertyListLookup::Verdict::noDictionary:
            return PropertyListNestedLookup::Verdict::outerNoDictionary;
        case PropertyListLookup::Verdict::absent:
            return PropertyListNestedLookup::Verdict::innerAbsent;
        case PropertyListLookup::Verdict::found:
            return PropertyListNestedLookup::Verdict::found;
    }
    return PropertyListNestedLookup::Verdict::malformed;
}

}  // namespace

PropertyListLookup lookUpRootKey(std::string_view bytes, std::string_view key) {
    return withLookup<PropertyListLookup>(bytes, [&](const auto& lookup) -> PropertyListLookup {
        const auto located = lookup.locateInRoot(key);
        if (located.verdict != PropertyListLookup::Verdict::found) return {located.verdict, {}};
        return {located.verdict, lookup.value(located.place)};
    });
}

PropertyListNestedLookup lookUpNestedKey(std::string_view bytes, std::string_view outerKey, std::string_view innerKey) {
    return withLookup<PropertyListNestedLookup>(bytes, [&](const auto& lookup) -> PropertyListNestedLookup {
        const auto outer = lookup.locateInRoot(outerKey);
        if (outer.verdict != PropertyListLookup::Verdict::found) return {verdictOnOuter(outer.verdict), {}};
        const auto inner = lookup.locateIn(outer.place, innerKey);
        if (inner.verdict != PropertyListLookup::Verdict::found) return {verdictOnInner(inner.verdict), {}};
        return {PropertyListNestedLookup::Verdict::found, lookup.value(inner.place)};
    });
}

}  // namespace platform
