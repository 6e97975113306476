// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/observed_content.h"

#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/render/value_text.h"
#include "platform/foundation/property_list.h"

namespace hosts::terminal {
namespace {

std::optional<platform::Value> entryOf(const platform::Dictionary& dictionary, const std::string& key) {
    const platform::Value* value = dictionary.find(key);
    return value ? std::optional(*value) : std::nullopt;
}

std::vector<Change> differences(const platform::Dictionary& before, const platform::Dictionary& after) {
    std::vector<Change> changes;
    for (const auto& [key, value] : before) {
        const platform::Value* now = after.find(key);
        if (!now || !(*now == value)) changes.push_back({key, value, entryOf(after, key)});
    }
    for (const auto& [key, value] : after) {
        if (!before.contains(key)) changes.push_back({key, std::nullopt, value});
    }
    return changes;
}

// A missing or malformed file reads as an empty one, as it does for the pane.
platform::Dictionary readDictionary(const platform::FileSystem& files, const std::string& path) {
    std::string bytes;
    if (!files.readFile(path, bytes)) return {};
    platform::PropertyListReading reading = platform::readPropertyList(bytes);
    const platform::Dictionary* content = reading ? reading.value->dictionary() : nullptr;
    return content ? *content : platform::Dictionary();
}

bool isDictionaryOrAbsent(const std::optional<platform::Value>& value) {
    return !value || value->dictionary();
}

platform::Dictionary dictionaryOf(const std::optional<platform::Value>& value) {
    return value ? *value->dictionary() : platform::Dictionary();
}

std::string changeLine(const std::string& key, const Change& change) {
    return printable(key) + ": " + valueSummary(change.before) + " -> " + valueSummary(change.after) + "\n";
}

}  // namespace

nlohmann::json changeJson(const Change& change) {
    return {{"key", change.key}, {"old", jsonOf(change.before)}, {"new", jsonOf(change.after)}};
}

std::string changeText(const Change& change) {
    const bool inEntries = isDictionaryOrAbsent(change.before) && isDictionaryOrAbsent(change.after);
    if (!inEntries) return changeLine(change.key, change);
    const auto entries = differences(dictionaryOf(change.before), dictionaryOf(change.after));
    // A dictionary that comes or goes empty has no entry to tell of.
    if (entries.empty()) return changeLine(change.key, change);
    std::string text;
    for (const Change& entry : entries)
        text += changeLine(change.key + " " + entry.key, entry);
    return text;
}

ObservedContent::ObservedContent(const platform::FileSystem& files, platform::PreferenceAccess::ObservedFile file)
    : _files(&files), _file(std::move(file)), _content(readDictionary(files, _file.path)) {}

std::vector<Change> ObservedContent::takeChanges() {
    platform::Dictionary now = readDictionary(*_files, _file.path);
    std::vector<Change> changes = differences(_content, now);
    _content = std::move(now);
    return changes;
}

}  // namespace hosts::terminal
