// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/phones/history_entry.h"
#include "hosts/system/descriptor.h"
#include "platform/foundation/result.h"

namespace hosts {

/// What our programs have changed on a phone: its last changes, a thousand and 64 MB at least for as long as there are
/// so many, in a file of this machine for their user alone. Phones that take turns in one place share the file and the
/// numbers of its changes, so that no number ever stands for changes of two of them.
///
/// A line of the file is a change, with a checksum, and is appended in one step under a lock; so several programs write
/// one history, and a line that was cut, as by a process that was killed, counts as not there. It is not made durable:
/// the change itself is, and a second flush would cost as much again. Nothing is read or made before it is asked for.
class History {
public:
    /// At most so many changes of a phone are given.
    static constexpr std::size_t mostEntries = 1000;

    /// `folder` is that of all histories; a problem where there is none. `place` is where the phone is, and `mark` asks
    /// what tells it from others there.
    History(platform::Result<std::string> folder, std::string place, std::function<std::string()> mark);

    /// Adds the changes in the order in which they were made, numbered and with the time. They belong to the turn of
    /// that number or, for 0, begin one; gives the turn's number. A problem when they are not kept.
    platform::Result<std::uint64_t> append(std::vector<HistoryEntry> entries, std::uint64_t turn);

    struct Reading {
        std::vector<HistoryEntry> entries;    ///< the phone's own, in the order in which they were made
        std::set<std::uint64_t> otherPhones;  ///< the numbers of changes of other phones that were in its place
        std::size_t damagedLines = 0;         ///< left out
    };
    /// An empty reading where nothing is kept. A problem where it cannot be read, or is of a newer version.
    platform::Result<Reading> read();

    /// Deletes what is kept of this phone, the copies of its files included that the changes name.
    platform::Result<platform::Done> forget();

private:
    struct Tail;

    platform::Result<std::string> readBytes();
    platform::Result<Descriptor> takeTurn();
    platform::Result<Tail> readTail(const Descriptor& file, std::size_t size);
    platform::Result<platform::Done> write(const Descriptor& file, std::size_t size, std::string_view text);
    platform::Result<platform::Done> trim();
    platform::Result<platform::Done> rewrite(std::string_view text);
    void forgetCopy(const KeptCopy& copy) const;
    platform::Problem problem(const char* step, std::string reason) const;
    platform::Problem newerVersion(const char* step) const;
    const std::string& owner();

    platform::Result<std::string> _folder;
    std::string _place;
    std::function<std::string()> _mark;
    std::string _path;
    std::optional<std::string> _owner;
};

}  // namespace hosts
