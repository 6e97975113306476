// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/binary_lookup.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/property_list/binary_reader.h"
#include "platform/foundation/property_list/same_key.h"
#include "platform/foundation/utf8.h"

namespace platform::property_list {

namespace {

using Verdict = PropertyListLookup::Verdict;
using NestedVerdict = PropertyListNestedLookup::Verdict;

/// Whether a string object says the text. One that is all ASCII, as keys are, is not copied for it.
bool says(const BinaryLayout& layout, const BinaryObject& object, std::string_view text) {
    if (object.kind == BinaryKind::asciiString) {
        if (object.count == text.size() && layout.content(object) == text) return isAscii(text);
        return object.count < text.size() && !isAscii(text) && binaryString(layout, object) == text;
    }
    return object.kind == BinaryKind::utf16String && object.count <= text.size() &&
           binaryString(layout, object) == text;
}

/// What a key says; one that is all ASCII is not copied for it.
class KeyText {
public:
    KeyText(const BinaryLayout& layout, const BinaryObject& key) : _isString(isString(key.kind)) {
        if (key.kind == BinaryKind::asciiString && isAscii(layout.content(key))) {
            _text = layout.content(key);
        } else if (_isString) {
            _text = _decoded = binaryString(layout, key);
        }
    }
    KeyText(const KeyText&) = delete;
    KeyText& operator=(const KeyText&) = delete;

    bool says(std::string_view text) const { return _isString && isSameKey(_text, text); }

private:
    bool _isString;
    std::string _decoded;
    std::string_view _text;
};

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

NestedLocated<std::size_t> BinaryLookup::locateNested(std::string_view outerKey, std::string_view innerKey) const {
    const Located<Place> outer = locateInRoot(outerKey);
    if (outer.verdict == Verdict::noDictionary) return {NestedVerdict::noDictionary};
    if (outer.verdict == Verdict::absent) return {NestedVerdict::outerAbsent};
    const Located<Place> inner = locateIn(outer.place, innerKey);
    if (inner.verdict == Verdict::noDictionary) return {NestedVerdict::outerNoDictionary};
    if (inner.verdict == Verdict::absent) return {NestedVerdict::innerAbsent};
    return {NestedVerdict::found, inner.place};
}

std::optional<Dictionary> BinaryLookup::readInRoot(std::span<const std::string_view> keys) const {
    const BinaryObject root = _layout.object(_layout.root());
    if (root.kind != BinaryKind::dictionary) return std::nullopt;
    BinaryReader reader(_layout);
    std::vector<Dictionary::Entry> entries;
    for (std::size_t index = 0; index < root.count; ++index) {
        const KeyText key(_layout, _layout.object(_layout.reference(root, index)));
        const auto wanted = std::ranges::find_if(keys, [&](std::string_view text) { return key.says(text); });
        if (wanted == keys.end()) continue;
        entries.push_back({std::string(*wanted), reader.value(_layout.reference(root, root.count + index))});
    }
    return Dictionary(std::move(entries), Dictionary::Duplicates::firstWins);
}

Value BinaryLookup::value(Place place) const {
    return BinaryReader(_layout).value(place);
}

}  // namespace platform::property_list
