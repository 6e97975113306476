// SPDX-License-Identifier: MIT
#include "hosts/session/reset.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/services/dictionary_files.h"

namespace hosts {
namespace {

using platform::Dictionary;
using platform::Result;
using platform::Value;

struct DefaultOf {
    std::string key;
    Value value;
};

std::vector<DefaultOf> defaultsOf(const platform::PreferenceAccess& settings, std::span<const std::string> keys) {
    std::vector<DefaultOf> defaults;
    for (const auto& setting : settings.settings()) {
        if (setting.defaultValue && std::ranges::find(keys, setting.key) != keys.end()) {
            defaults.push_back({setting.key, *setting.defaultValue});
        }
    }
    return defaults;
}

OwnChange resetIn(const std::string& file, Dictionary held, const std::vector<DefaultOf>& defaults) {
    OwnChange change{std::move(held), {}};
    for (const DefaultOf& each : defaults) {
        const auto before = change.content.valueForKey(each.key);
        if (!before || *before == each.value) continue;
        change.content.set(each.key, each.value);
        addHistoryEntries(change.steps, file, each.key, before, each.value);
    }
    return change;
}

/// A reset as a change of the main settings file.
struct ResetChange {
    std::string file;
    OwnChanges::Make make;
};

ResetChange resetOf(const platform::PreferenceAccess& settings, std::span<const std::string> keys) {
    const auto files = settings.observedFiles();
    const std::string file = files.empty() ? std::string() : files.front().path;
    return {file, [file, defaults = defaultsOf(settings, keys)](Dictionary held) {
                return Result(resetIn(file, std::move(held), defaults));
            }};
}

}  // namespace

Result<std::vector<HistoryEntry>> resetSettings(OwnChanges changes, const platform::PreferenceAccess& settings,
                                                std::span<const std::string> keys) {
    const ResetChange reset = resetOf(settings, keys);
    const auto foreseen = changes.foresee(reset.file, reset.make);
    if (!foreseen) return foreseen.error();
    // A file that cannot be understood holds no setting, and is not to be written over for none.
    if (foreseen->steps.empty()) return foreseen->steps;
    changes.endTurn();
    return changes.change(reset.file, reset.make);
}

bool wouldReset(platform::FileSystem& files, const platform::PreferenceAccess& settings,
                std::span<const std::string> keys) {
    const ResetChange reset = resetOf(settings, keys);
    const auto held = platform::DictionaryFiles(files).read(reset.file);
    const auto foreseen = reset.make(held ? *held : Dictionary());
    return foreseen && !foreseen->steps.empty();
}

}  // namespace hosts
