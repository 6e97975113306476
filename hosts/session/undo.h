// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "hosts/phones/history.h"
#include "hosts/session/own_changes.h"
#include "platform/foundation/result.h"

namespace hosts {

/// What is to be undone, chosen from a phone's history; none where there is no such turn. What has been undone already
/// is left out. The last change first.
std::vector<HistoryEntry> lastTurn(const History::Reading& history);
/// For programs in which undoing goes on to the turn before and redoing comes back: the last turn that is no undo, and
/// the last undo that no other turn has followed.
std::vector<HistoryEntry> turnToUndo(const History::Reading& history);
std::vector<HistoryEntry> turnToRedo(const History::Reading& history);
/// The turn of that number, as far as it has not been undone.
std::vector<HistoryEntry> turnNumbered(const History::Reading& history, std::uint64_t turn);
/// A problem where one of them is not there, is another phone's or has been undone.
platform::Result<std::vector<HistoryEntry>> changesNamed(const History::Reading& history,
                                                         std::span<const std::uint64_t> numbers);

/// Takes changes back, as the program's own act and not a page's: what a key or an entry held is put back, or what was
/// not there is taken out, and all else that is in the file by then stays.
class Undo {
public:
    explicit Undo(OwnChanges changes) : _changes(std::move(changes)) {}

    enum class Newer {
        stays,  ///< what has been changed since, by whomever, is a problem
        isOverwritten
    };

    /// Why the changes, the last first, cannot be taken back as things are now; nothing where they can.
    std::optional<platform::Problem> obstacle(std::span<const HistoryEntry> changes);

    /// Takes them back in one turn, with one change of each file, and gives what was done. A problem when a file was
    /// not changed: then none of those after it was, in the order of the last change of each.
    platform::Result<std::vector<HistoryEntry>> takeBack(std::span<const HistoryEntry> changes, Newer newer);

private:
    OwnChanges _changes;
};

}  // namespace hosts
