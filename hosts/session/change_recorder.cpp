// SPDX-License-Identifier: MIT
#include "hosts/session/change_recorder.h"

#include <utility>

namespace hosts {

void ChangeRecorder::changed(std::string_view path, const platform::Dictionary& before,
                             const platform::Dictionary& after) {
    _next.changed(path, before, after);
    record(historyEntries(path, before, after));
}

void ChangeRecorder::record(std::vector<HistoryEntry> entries) {
    const auto copies = std::exchange(_copies, {});
    if (entries.empty()) return;
    for (HistoryEntry& entry : entries) {
        const auto copy = copies.find(entry.file);
        if (copy != copies.end()) entry.kept = copy->second;
    }
    const auto turn = _history.append(std::move(entries), _turn);
    if (turn) {
        _turn = *turn;
    } else {
        _next.remark("what has been changed is not in the history, and cannot be undone: " + turn.error().text());
    }
}

void ChangeRecorder::notChanged(const platform::Problem& problem, bool wasTried) {
    _copies.clear();
    _next.notChanged(problem, wasTried);
}

void ChangeRecorder::kept(std::string_view path, const KeptCopy& copy) {
    _copies.insert_or_assign(std::string(path), copy);
    _next.kept(path, copy);
}

}  // namespace hosts
