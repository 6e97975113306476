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

PropertyListLookup lookUpBinary(const BinaryLayout& layout, std::string_view key) {
    const BinaryObject root = layout.object(layout.root());
    if (root.kind != BinaryKind::dictionary) return {Verdict::noDictionary, {}};
    for (std::size_t index = 0; index < root.count; ++index) {
        const BinaryObject candidate = layout.object(layout.reference(root, index));
        if (says(layout, candidate, key)) {
            return {Verdict::found, BinaryReader(layout).value(layout.reference(root, root.count + index))};
        }
    }
    return {Verdict::absent, {}};
}

}  // namespace platform::property_list
