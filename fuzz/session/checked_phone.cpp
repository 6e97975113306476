// SPDX-License-Identifier: MIT
#include "fuzz/session/checked_phone.h"

#include <algorithm>
#include <set>
#include <utility>

#include "fuzz/require.h"
#include "platform/foundation/property_list.h"

namespace fuzz {
namespace {

using namespace platform;

/// Reading XML takes a U+FEFF off the start of a key, whether or not the key without it is there too.
bool hasMarkedKey(const Dictionary& dictionary) {
    return std::any_of(dictionary.begin(), dictionary.end(),
                       [](const Dictionary::Entry& entry) { return entry.key.starts_with("\xEF\xBB\xBF"); });
}

/// Whether a value is as it was, as far as XML can say it.
bool isKept(const Value* before, const Value* after) {
    if (!before || !after) return false;
    if (*before == *after) return true;
    const PropertyListWriting writing = writeXmlPropertyList(*before);
    return writing && readPropertyList(*writing.bytes).value == *after;
}

void checkChange(const Dictionary& before, const Dictionary& after) {
    std::set<std::string> keys;
    for (const auto& entry : before)
        keys.insert(entry.key);
    for (const auto& entry : after)
        keys.insert(entry.key);
    const auto changes = std::count_if(
        keys.begin(), keys.end(), [&](const std::string& key) { return !isKept(before.find(key), after.find(key)); });
    require(changes <= 1, "a write changes one key and keeps all others");
}

}  // namespace

Result<Stamp> CheckedPhone::look(std::string_view path) const {
    const auto found = _files.find(path);
    if (found == _files.end()) return Problem{std::string(path), "cannot read", "it is not there"};
    // Nothing else writes these files.
    return Stamp{.inode = _writes, .size = found->second.size(), .isSettled = true};
}

Result<Stamp> CheckedPhone::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    contents.clear();
    auto stamp = look(path);
    if (stamp && stamp->size > limit) return Problem{std::string(path), "cannot read", "it is too long"};
    if (stamp) contents = _files.find(path)->second;
    return stamp;
}

Result<std::vector<std::string>> CheckedPhone::listFolder(std::string_view path) const {
    const std::string folder = std::string(path) + '/';
    std::set<std::string> names;
    for (auto file = _files.lower_bound(folder); file != _files.end() && file->first.starts_with(folder); ++file)
        names.insert(file->first.substr(folder.size(), file->first.find('/', folder.size()) - folder.size()));
    return std::vector<std::string>(names.begin(), names.end());
}

Result<Stamp> CheckedPhone::changeFile(std::string_view path, const Change& change) {
    std::string held;
    const bool isThere = readFile(path, held).has_value();
    auto contents = change(isThere ? std::optional<std::string_view>(held) : std::nullopt);
    if (!contents) return contents.error();
    const auto before = dictionary(path);
    require(readPropertyList(contents->bytes).value.has_value(), "a file that is written can be read");
    put(path, std::move(contents->bytes));
    ++_writes;
    check(before, path);
    return look(path);
}

void CheckedPhone::check(const std::optional<Dictionary>& held, std::string_view path) const {
    const Dictionary before = held.value_or(Dictionary());
    const auto after = dictionary(path);
    require(after || before.contains("CF$UID"), "a file that is written is a dictionary");
    if (after && !hasMarkedKey(before)) checkChange(before, *after);
}

std::optional<Dictionary> CheckedPhone::dictionary(std::string_view path) const {
    const auto found = _files.find(path);
    if (found == _files.end()) return std::nullopt;
    const PropertyListReading reading = readPropertyList(found->second);
    if (!reading || !reading.value->dictionary()) return std::nullopt;
    return *reading.value->dictionary();
}

}  // namespace fuzz
