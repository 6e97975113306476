// SPDX-License-Identifier: MIT
#include "hosts/session/undo.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "hosts/session/printable.h"

namespace hosts {
namespace {

using platform::Dictionary;
using platform::Problem;
using platform::Result;
using platform::Value;

Dictionary dictionaryUnder(const Dictionary& held, const std::string& key) {
    const Value* const value = held.find(key);
    return value && value->dictionary() ? *value->dictionary() : Dictionary();
}

void put(Dictionary& dictionary, const std::string& key, const std::optional<Value>& value) {
    value ? dictionary.set(key, *value) : dictionary.remove(key);
}

void takeBackEntry(Dictionary& content, const HistoryEntry& change) {
    const Value* const held = content.find(change.key);
    // Nothing to take out of what is no dictionary.
    if (!change.before && !(held && held->dictionary())) return;
    Dictionary entries = dictionaryUnder(content, change.key);
    put(entries, *change.entry, change.before);
    const bool isAsItCame = change.madeDictionary && entries.empty();
    put(content, change.key, isAsItCame ? std::nullopt : std::optional(Value(std::move(entries))));
}

// A step that changes nothing is one all the same: it says that the change is taken back.
void takeBackOne(OwnChange& result, const HistoryEntry& change) {
    const auto before = result.content.valueForKey(change.key);
    if (change.entry) {
        takeBackEntry(result.content, change);
    } else {
        put(result.content, change.key, change.before);
    }
    std::vector<HistoryEntry> steps;
    addHistoryEntries(steps, change.file, change.key, before, result.content.valueForKey(change.key));
    if (steps.empty()) {
        steps.push_back({.file = change.file,
                         .key = change.key,
                         .entry = change.entry,
                         .before = change.before,
                         .after = change.before});
    }
    for (HistoryEntry& step : steps) {
        step.undoes = change.change;
        result.steps.push_back(std::move(step));
    }
}

bool isAsChanged(const Dictionary& content, const HistoryEntry& change) {
    const auto held = change.entry ? dictionaryUnder(content, change.key).valueForKey(*change.entry)
                                   : content.valueForKey(change.key);
    return held == change.after;
}

Result<OwnChange> takenBack(Dictionary held, std::span<const HistoryEntry> changes, Undo::Newer newer) {
    OwnChange result{std::move(held), {}};
    for (const HistoryEntry& change : changes) {
        if (newer == Undo::Newer::stays && !isAsChanged(result.content, change)) {
            return Problem{.reason = inQuotes(change.name()) + " has been changed since change " +
                                     std::to_string(change.change)};
        }
        takeBackOne(result, change);
    }
    return result;
}

OwnChanges::Make takingBack(const std::vector<HistoryEntry>& changes, Undo::Newer newer) {
    return [changes, newer](Dictionary held) { return takenBack(std::move(held), changes, newer); };
}

// In the order in which their files come first.
std::vector<std::pair<std::string, std::vector<HistoryEntry>>> byFile(std::span<const HistoryEntry> changes) {
    std::vector<std::pair<std::string, std::vector<HistoryEntry>>> files;
    for (const HistoryEntry& change : changes) {
        auto file = std::ranges::find(files, change.file, [](const auto& known) { return known.first; });
        if (file == files.end()) file = files.insert(file, {change.file, {}});
        file->second.push_back(change);
    }
    return files;
}

using Entries = std::map<std::uint64_t, const HistoryEntry*>;

// Whether an entry is there to take back changes of the user's, and not to bring them again.
bool isUndo(const HistoryEntry& entry, const Entries& all) {
    if (!entry.undoes) return false;
    const auto undone = all.find(*entry.undoes);
    return undone == all.end() || !isUndo(*undone->second, all);
}

Entries numbered(const History::Reading& history) {
    Entries all;
    for (const HistoryEntry& entry : history.entries)
        all.emplace(entry.change, &entry);
    return all;
}

template <class Predicate>
std::vector<HistoryEntry> lastTurnWhere(const History::Reading& history, Predicate isMeant) {
    const auto& entries = history.entries;
    const auto last = std::find_if(entries.rbegin(), entries.rend(),
                                   [&](const HistoryEntry& entry) { return !entry.isUndone && isMeant(entry); });
    return last == entries.rend() ? std::vector<HistoryEntry>() : turnNumbered(history, last->turn);
}

}  // namespace

std::vector<HistoryEntry> turnNumbered(const History::Reading& history, std::uint64_t turn) {
    std::vector<HistoryEntry> changes;
    std::ranges::copy_if(history.entries, std::back_inserter(changes),
                         [turn](const HistoryEntry& entry) { return entry.turn == turn && !entry.isUndone; });
    std::ranges::reverse(changes);
    return changes;
}

std::vector<HistoryEntry> lastTurn(const History::Reading& history) {
    return lastTurnWhere(history, [](const HistoryEntry&) { return true; });
}

std::vector<HistoryEntry> turnToUndo(const History::Reading& history) {
    return lastTurnWhere(history, [](const HistoryEntry& entry) { return !entry.undoes; });
}

std::vector<HistoryEntry> turnToRedo(const History::Reading& history) {
    const Entries all = numbered(history);
    const auto isNew = [](const HistoryEntry& entry) { return !entry.undoes; };
    const auto lastNew = std::find_if(history.entries.rbegin(), history.entries.rend(), isNew);
    const std::uint64_t oldest = lastNew == history.entries.rend() ? 0 : lastNew->change;
    return lastTurnWhere(history,
                         [&](const HistoryEntry& entry) { return entry.change > oldest && isUndo(entry, all); });
}

Result<std::vector<HistoryEntry>> changesNamed(const History::Reading& history,
                                               std::span<const std::uint64_t> numbers) {
    const Entries all = numbered(history);
    std::map<std::uint64_t, HistoryEntry, std::greater<>> named;
    for (const std::uint64_t number : numbers) {
        const std::string name = "change " + std::to_string(number);
        const auto entry = all.find(number);
        if (history.otherPhones.contains(number)) {
            return Problem{.reason = name + " was made on another phone, which was in this one's place"};
        }
        if (entry == all.end()) return Problem{.reason = "there is no " + name + " in the history"};
        if (entry->second->isUndone) return Problem{.reason = name + " has been undone already"};
        named.emplace(number, *entry->second);
    }
    std::vector<HistoryEntry> changes;
    changes.reserve(named.size());
    for (auto& [number, entry] : named)
        changes.push_back(std::move(entry));
    return changes;
}

std::optional<Problem> Undo::obstacle(std::span<const HistoryEntry> changes) {
    for (const auto& [file, ofFile] : byFile(changes)) {
        const auto result = _changes.foresee(file, takingBack(ofFile, Newer::stays));
        if (!result) return result.error();
    }
    return std::nullopt;
}

Result<std::vector<HistoryEntry>> Undo::takeBack(std::span<const HistoryEntry> changes, Newer newer) {
    if (newer == Newer::stays) {
        if (auto problem = obstacle(changes)) return *std::move(problem);
    }
    std::vector<HistoryEntry> taken;
    _changes.endTurn();
    for (const auto& [file, ofFile] : byFile(changes)) {
        auto steps = _changes.change(file, takingBack(ofFile, newer));
        if (!steps) return steps;
        std::ranges::move(*steps, std::back_inserter(taken));
    }
    _changes.endTurn();
    return taken;
}

}  // namespace hosts
