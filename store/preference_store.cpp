// SPDX-License-Identifier: MIT
#include "store/preference_store.h"

#include <string>
#include <utility>

#include "store/settings_catalogue.h"

namespace trivel3 {

using platform::Dictionary;
using platform::Value;

std::optional<Value> PreferenceStore::storedValueForKey(std::string_view key) const {
    const auto content = _platform.dictionaries.read(settingsFile);
    return content ? content->valueForKey(key) : std::nullopt;
}

std::optional<Value> PreferenceStore::preferenceForKey(std::string_view key) const {
    auto stored = storedValueForKey(key);
    return stored ? stored : SettingsCatalogue::defaultForKey(key);
}

void PreferenceStore::setPreferenceForKey(Value value, std::string_view key) {
    changePreferenceForKey(key, [value = std::move(value)](const std::optional<Value>&) { return value; });
}

void PreferenceStore::setPreferences(Dictionary values) {
    edit([values = std::move(values)](Dictionary held) {
        for (const auto& [key, value] : values)
            held.set(key, value);
        return held;
    });
}

void PreferenceStore::changePreferenceForKey(std::string_view key, const Change& change) {
    edit([key = std::string(key), change](Dictionary held) {
        if (auto value = change(held.valueForKey(key))) {
            held.set(key, *std::move(value));
        } else {
            held.remove(key);
        }
        return held;
    });
}

void PreferenceStore::edit(const platform::DictionaryFiles::Edit& edit) {
    _platform.dictionaries.edit(settingsFile, edit);
    _platform.notifications.postNotification(changeNotification);
}

}  // namespace trivel3
