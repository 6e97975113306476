// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "hosts/phones/history.h"
#include "hosts/phones/phone_listener.h"

namespace hosts {

/// Keeps in the phone's history what a session changes, turn by turn, and passes on all that it is told. What cannot be
/// kept is a remark, and no obstacle.
class ChangeRecorder final : public PhoneListener {
public:
    /// Both outlive the object.
    ChangeRecorder(PhoneListener& next, History& history) : _next(next), _history(history) {}

    /// What is changed from here on belongs to another turn.
    void endTurn() { _turn = 0; }

    /// The number of the turn that is going on; 0 before the first change of it has been kept.
    std::uint64_t turn() const { return _turn; }

    /// Keeps changes that this session has made, in the order in which it has.
    void record(std::vector<HistoryEntry> entries);

    void passedOver(const platform::Problem& problem) override { _next.passedOver(problem); }
    void changed(std::string_view path, const platform::Dictionary& before, const platform::Dictionary& after) override;
    void notRead(const platform::Problem& problem) override { _next.notRead(problem); }
    void notChanged(const platform::Problem& problem, bool wasTried) override;
    void remark(const std::string& sentence) override { _next.remark(sentence); }
    void notTold(const platform::Problem& problem) override { _next.notTold(problem); }
    void kept(std::string_view path, const KeptCopy& copy) override;

private:
    PhoneListener& _next;
    History& _history;
    std::uint64_t _turn = 0;
    /// What the file held that is being changed.
    std::map<std::string, KeptCopy, std::less<>> _copies;
};

/// A phone's history, and what writes it. For one session at a time.
struct PhoneHistory {
    /// `next` outlives the object.
    PhoneHistory(History kept, PhoneListener& next) : history(std::move(kept)), recorder(next, history) {}
    PhoneHistory(const PhoneHistory&) = delete;
    PhoneHistory& operator=(const PhoneHistory&) = delete;

    History history;
    ChangeRecorder recorder;
};

}  // namespace hosts
