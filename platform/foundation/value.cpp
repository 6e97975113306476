// SPDX-License-Identifier: MIT
#include "platform/foundation/value.h"

#include <algorithm>

#include "platform/foundation/bytes.h"

namespace platform {

Value::Value(std::string_view text) : _storage(std::make_shared<const std::string>(text)) {}
Value::Value(std::string text) : _storage(std::make_shared<const std::string>(std::move(text))) {}
Value::Value(Data data) : _storage(std::make_shared<const Data>(std::move(data))) {}
Value::Value(Array array) : _storage(std::make_shared<const Array>(std::move(array))) {}
Value::Value(Dictionary dictionary) : _storage(std::make_shared<const Dictionary>(std::move(dictionary))) {}
Value::Value(Set set) : _storage(std::make_shared<const Set>(std::move(set))) {}

namespace {

bool entryPrecedes(const Dictionary::Entry& left, const Dictionary::Entry& right) {
    return precedesInUtf16Order(left.key, right.key);
}

/// Files that the platform wrote are in order already, and most files are.
bool isStrictlyAscending(const std::vector<Dictionary::Entry>& entries) {
    return std::adjacent_find(entries.begin(), entries.end(), [](const auto& left, const auto& right) {
               return !entryPrecedes(left, right);
           }) == entries.end();
}

template <class Entries>
auto lowerBound(Entries& entries, std::string_view key) {
    return std::lower_bound(entries.begin(), entries.end(), key,
                            [](const Dictionary::Entry& entry, std::string_view wanted) {
                                return precedesInUtf16Order(entry.key, wanted);
                            });
}

}  // namespace

Dictionary::Dictionary(std::initializer_list<Entry> entries)
    : Dictionary(std::vector<Entry>(entries), Duplicates::lastWins) {}

Dictionary::Dictionary(std::vector<Entry> entries, Duplicates duplicates) : _entries(std::move(entries)) {
    if (isStrictlyAscending(_entries)) return;
    if (duplicates == Duplicates::lastWins) std::reverse(_entries.begin(), _entries.end());
    std::stable_sort(_entries.begin(), _entries.end(), entryPrecedes);
    auto firstOfEach = std::unique(_entries.begin(), _entries.end(),
                                   [](const Entry& left, const Entry& right) { return left.key == right.key; });
    _entries.erase(firstOfEach, _entries.end());
}

const Value* Dictionary::find(std::string_view key) const {
    auto place = lowerBound(_entries, key);
    return place != _entries.end() && place->key == key ? &place->value : nullptr;
}

std::optional<Value> Dictionary::valueForKey(std::string_view key) const {
    const Value* value = find(key);
    return value ? std::optional(*value) : std::nullopt;
}

void Dictionary::set(std::string_view key, Value value) {
    auto place = lowerBound(_entries, key);
    if (place != _entries.end() && place->key == key) {
        place->value = std::move(value);
    } else {
        _entries.insert(place, Entry{std::string(key), std::move(value)});
    }
}

void Dictionary::remove(std::string_view key) {
    auto place = lowerBound(_entries, key);
    if (place != _entries.end() && place->key == key) _entries.erase(place);
}

void Dictionary::addOddEntry(Value key, Value value) {
    _oddEntries.emplace_back(std::move(key), std::move(value));
}

namespace {

/// The place of a UTF-8 byte in the order of UTF-16 code units. Lead bytes from 0xF0 stand for
/// surrogate pairs, whose units (from D800) precede the units of lead bytes 0xEE and 0xEF (from
/// E000); everywhere else the two orders agree.
unsigned utf16Rank(char byte) {
    const unsigned rank = static_cast<unsigned char>(byte);
    return rank == 0xEE || rank == 0xEF ? rank + 0x100 : rank;
}

}  // namespace

bool precedesInUtf16Order(std::string_view left, std::string_view right) {
    const std::size_t common = commonPrefixLength(left, right);
    if (common == right.size()) return false;
    return common == left.size() || utf16Rank(left[common]) < utf16Rank(right[common]);
}

}  // namespace platform
