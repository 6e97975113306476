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

bool CheckedPhone::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    const auto found = _files.find(path);
    const bool isThere = found != _files.end() && found->second.size() <= limit;
    contents = isThere ? found->second : std::string();
    return isThere;
}

std::vector<std::string> CheckedPhone::listFolder(std::string_view path) const {
    const std::string folder = std::string(path) + '/';
    std::set<std::string> names;
    for (auto file = _files.lower_bound(folder); file != _files.end() && file->first.starts_with(folder); ++file)
        names.insert(file->first.substr(folder.size(), file->first.find('/', folder.size()) - folder.size()));
    return {names.begin(), names.end()};
}

bool CheckedPhone::writeFileAtomically(std::string_view path, std::string_view contents) {
    const Dictionary before = dictionary(path).value_or(Dictionary());
    put(path, std::string(contents));
    ++_writes;
    require(readPropertyList(contents).value.has_value(), "a file that is written can be read");
    const auto after = dictionary(path);
    require(after || before.contains("CF$UID"), "a file that is written is a dictionary");
    if (after && !hasMarkedKey(before)) checkChange(before, *after);
    return true;
}

std::optional<Dictionary> CheckedPhone::dictionary(std::string_view path) const {
    const auto found = _files.find(path);
    if (found == _files.end()) return std::nullopt;
    const PropertyListReading reading = readPropertyList(found->second);
    if (!reading || !reading.value->dictionary()) return std::nullopt;
    return *reading.value->dictionary();
}

}  // namespace fuzz
