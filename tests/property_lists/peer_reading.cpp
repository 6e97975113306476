// SPDX-License-Identifier: MIT
#include "tests/property_lists/peer_reading.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace peers {
namespace {

using namespace platform;

bool countDown(const Value& value, std::size_t& left) {
    if (left == 0) return false;
    --left;
    const auto all = [&](const std::vector<Value>& members) {
        for (const Value& member : members) {
            if (!countDown(member, left)) return false;
        }
        return true;
    };
    if (const Array* array = value.array()) return all(*array);
    if (const Set* set = value.set()) return all(set->members);
    if (const Dictionary* dictionary = value.dictionary()) {
        for (const auto& entry : *dictionary) {
            if (!countDown(entry.value, left)) return false;
        }
        for (const auto& [key, entry] : dictionary->oddEntries()) {
            if (!countDown(entry, left)) return false;
        }
    }
    return true;
}

/// A value that is its dictionary's only one, under the key of a UID; else a null pointer.
const Value* uidNumber(const Dictionary& dictionary) {
    const Value* number = dictionary.size() == 1 ? dictionary.find("CF$UID") : nullptr;
    return number && (number->integer() || number->real()) ? number : nullptr;
}

}  // namespace

Value withXmlUids(const Value& value) {
    if (const Array* array = value.array()) {
        Array items;
        for (const Value& item : *array)
            items.push_back(withXmlUids(item));
        return items;
    }
    const Dictionary* dictionary = value.dictionary();
    if (!dictionary) return value;
    if (const Value* number = uidNumber(*dictionary)) return Uid{static_cast<std::uint32_t>(integerValue(*number))};
    Dictionary entries;
    for (const auto& entry : *dictionary)
        entries.set(entry.key, withXmlUids(entry.value));
    return entries;
}

bool unfoldsWithin(const Value& value, std::size_t mostObjects) {
    return countDown(value, mostObjects);
}

}  // namespace peers
