// SPDX-License-Identifier: MIT
#include "hosts/session/own_changes.h"

#include <optional>
#include <utility>

#include "platform/services/dictionary_files.h"

namespace hosts {
namespace {

using platform::Dictionary;
using platform::Problem;
using platform::Result;

/// Hears what becomes of one file that is changed.
class OwnChangeListener final : public platform::FileListener {
public:
    OwnChangeListener(platform::FileListener& next, const OwnChanges::Make& make) : _next(next), _make(make) {}

    void passedOver(const Problem& problem) override { _next.passedOver(problem); }
    void changed(std::string_view, const Dictionary& before, const Dictionary&) override {
        if (auto result = _make(before)) _steps = std::move(result->steps);
    }
    void notRead(const Problem& problem) override { _problem = problem; }
    void notChanged(const Problem& problem, bool) override { _problem = problem; }

    const std::optional<Problem>& problem() const { return _problem; }
    const std::vector<HistoryEntry>& steps() const { return _steps; }

private:
    platform::FileListener& _next;
    const OwnChanges::Make& _make;
    std::optional<Problem> _problem;
    std::vector<HistoryEntry> _steps;
};

}  // namespace

Result<OwnChange> OwnChanges::foresee(const std::string& file, const Make& make) {
    OwnChangeListener listener(_recorder, make);
    platform::DictionaryFiles dictionaries(_files, &listener);
    const auto held = dictionaries.read(file);
    if (listener.problem()) return *listener.problem();
    return make(held ? *held : Dictionary());
}

Result<std::vector<HistoryEntry>> OwnChanges::change(const std::string& file, const Make& make) {
    OwnChangeListener listener(_recorder, make);
    platform::DictionaryFiles dictionaries(_files, &listener);
    dictionaries.edit(file, [make](Dictionary held) -> Result<Dictionary> {
        auto result = make(std::move(held));
        if (!result) return std::move(result).error();
        return std::move(result->content);
    });
    dictionaries.land();
    if (listener.problem()) return *listener.problem();
    _recorder.record(listener.steps());
    for (const auto& observed : _observed) {
        if (observed.path == file) _notifications.postNotification(observed.notification);
    }
    return listener.steps();
}

}  // namespace hosts
