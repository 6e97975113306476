// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/binary_lookup.h"

#include "platform/foundation/property_list/binary_reader.h"
#include "platform/foundation/property_list/unicode.h"

namespace platform::property_list {

namespace {

using Verdict = PropertyListLookup::Verdict;

/// Whether a string object says the text. One that is all ASCII, as keys are, is not copied for it.
bool says(const BinaryLayout& layout, const BinaryObject& object, std::string_view text) {
    if (object.kind == BinaryKind::asciiString) {
        if (object.count == text.size() && layout.content(object) == text) return isAscii(text);
        return object.count < text.size() && !isAscii(text) && binaryString(layout, object) == text;
    }
    return object.kind == BinaryKind::utf16String && object.count <= text.size() &&
           binaryString(layout, object) == text;
}

}  // namespace

Located<std::size_t> BinaryLookup::locateIn(Place dictionary, std::string_view key) const {
    const BinaryObject object = _layout.object(dictionary);
    if (object.kind != BinaryKind::dictionary) return {Verdict::noDictionary};
    for (std::size_t index = 0; index < object.count; ++index) {
        if (says(_layout, _layout.object(_layout.reference(object, index)), key)) {
            return {Verdict::found, _layout.reference(object, object.count + index)};
        }
    }
    return {Verdict::absent};
}

Value BinaryLookup::value(Place place) const {
    return BinaryReader(_layout).value(place);
}

}  // namespace platform::property_list
