// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/phones/phone_listener.h"
#include "platform/foundation/value.h"

namespace hosts {

/// One change of a setting, as the history of its phone keeps it.
struct HistoryEntry {
    std::uint64_t change = 0;  ///< its number, from 1 on; a later change has a greater one, whatever the clock says
    std::uint64_t turn = 0;    ///< the number of the first change of its turn
    platform::Date time = {};
    std::string file = {};  ///< its path on the phone
    std::string key = {};
    /// The entry of the dictionary under the key; nothing where the key's whole value was changed.
    std::optional<std::string> entry = {};
    std::optional<platform::Value> before = {};  ///< nothing where there was none, which null is not
    std::optional<platform::Value> after = {};
    /// Of the change of an entry: whether there was nothing under the key before.
    bool madeDictionary = false;
    /// The change that was taken back by this one.
    std::optional<std::uint64_t> undoes = {};
    /// Where what the file held is kept, when it was written over without having been understood.
    std::optional<KeptCopy> kept = {};
    /// Whether a later change has taken this one back, and has not been taken back itself.
    bool isUndone = false;

    /// "KEY", or "KEY/ENTRY". It may hold any characters.
    std::string name() const { return entry ? key + "/" + *entry : key; }
};

/// A point in time, in seconds since 1970-01-01T00:00:00Z.
platform::Date dateOf(double unixTime);

/// What has become of a file, without numbers and time. Dictionaries are told apart entry by entry, one that comes or
/// goes as a whole too, so that each entry can be taken back by itself.
std::vector<HistoryEntry> historyEntries(std::string_view file, const platform::Dictionary& before,
                                         const platform::Dictionary& after);

/// The same of one key.
void addHistoryEntries(std::vector<HistoryEntry>& entries, std::string_view file, std::string_view key,
                       const std::optional<platform::Value>& before, const std::optional<platform::Value>& after);

/// An entry as a property list, which keeps what is told but `isUndone`; nothing for what is no entry.
platform::Dictionary recordOf(const HistoryEntry& entry);
std::optional<HistoryEntry> entryOf(const platform::Dictionary& record);

}  // namespace hosts
