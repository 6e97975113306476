// SPDX-License-Identifier: MIT
#include "hosts/phones/history_entry.h"

#include <utility>

#include "hosts/phones/key_change.h"

namespace hosts {
namespace {

using platform::Dictionary;
using platform::Value;

namespace field {
constexpr const char* change = "change";
constexpr const char* turn = "turn";
constexpr const char* time = "time";
constexpr const char* file = "file";
constexpr const char* key = "key";
constexpr const char* entry = "entry";
constexpr const char* before = "old";
constexpr const char* after = "new";
constexpr const char* madeDictionary = "madeDictionary";
constexpr const char* undoes = "undoes";
constexpr const char* kept = "kept";
constexpr const char* keptOnPhone = "keptOnPhone";
}  // namespace field

bool isNothingOrDictionary(const std::optional<Value>& value) {
    return !value || (value->dictionary() && value->dictionary()->oddEntries().empty());
}

std::optional<std::uint64_t> numberIn(const Dictionary& record, const char* name) {
    const Value* value = record.find(name);
    if (!value || !value->integer() || value->integer()->isNegative()) return std::nullopt;
    return value->integer()->bits;
}

std::optional<std::string> textIn(const Dictionary& record, const char* name) {
    const Value* value = record.find(name);
    return value && value->string() ? std::optional(*value->string()) : std::nullopt;
}

void setWhereThere(Dictionary& record, const char* name, const std::optional<Value>& value) {
    if (value) record.set(name, *value);
}

}  // namespace

platform::Date dateOf(double unixTime) {
    constexpr double from1970To2001 = 978'307'200;
    return {unixTime - from1970To2001};
}

void addHistoryEntries(std::vector<HistoryEntry>& entries, std::string_view file, std::string_view key,
                       const std::optional<Value>& before, const std::optional<Value>& after) {
    if (before == after) return;
    HistoryEntry change{.file = std::string(file), .key = std::string(key)};
    const auto parts = isNothingOrDictionary(before) && isNothingOrDictionary(after) ? differences(before, after)
                                                                                     : std::vector<KeyChange>();
    for (const KeyChange& part : parts) {
        change.entry = part.key;
        change.before = part.before;
        change.after = part.after;
        change.madeDictionary = !before;
        entries.push_back(change);
    }
    if (!parts.empty()) return;
    change.before = before;
    change.after = after;
    entries.push_back(std::move(change));
}

std::vector<HistoryEntry> historyEntries(std::string_view file, const Dictionary& before, const Dictionary& after) {
    std::vector<HistoryEntry> entries;
    for (const KeyChange& change : differences(before, after))
        addHistoryEntries(entries, file, change.key, change.before, change.after);
    return entries;
}

Dictionary recordOf(const HistoryEntry& entry) {
    Dictionary record{{field::change, entry.change},
                      {field::turn, entry.turn},
                      {field::time, entry.time},
                      {field::file, entry.file},
                      {field::key, entry.key}};
    if (entry.entry) record.set(field::entry, *entry.entry);
    setWhereThere(record, field::before, entry.before);
    setWhereThere(record, field::after, entry.after);
    if (entry.madeDictionary) record.set(field::madeDictionary, true);
    if (entry.undoes) record.set(field::undoes, *entry.undoes);
    if (entry.kept) {
        record.set(field::kept, entry.kept->path);
        record.set(field::keptOnPhone, entry.kept->isOnPhone);
    }
    return record;
}

std::optional<HistoryEntry> entryOf(const Dictionary& record) {
    const auto change = numberIn(record, field::change);
    const auto turn = numberIn(record, field::turn);
    const Value* const time = record.find(field::time);
    auto file = textIn(record, field::file);
    auto key = textIn(record, field::key);
    if (!change || !turn || !time || !time->date() || !file || !key) return std::nullopt;
    HistoryEntry entry{*change, *turn, *time->date(), *std::move(file), *std::move(key)};
    entry.entry = textIn(record, field::entry);
    entry.before = record.valueForKey(field::before);
    entry.after = record.valueForKey(field::after);
    entry.madeDictionary = platform::boolValue(record.valueForKey(field::madeDictionary));
    entry.undoes = numberIn(record, field::undoes);
    if (auto path = textIn(record, field::kept)) {
        entry.kept = KeptCopy{*std::move(path), platform::boolValue(record.valueForKey(field::keptOnPhone))};
    }
    return entry;
}

}  // namespace hosts
