// SPDX-License-Identifier: MIT
#include "store/settings_access.h"

#include "platform/foundation/class_definition.h"
#include "store/exceptions_file.h"
#include "store/settings_catalogue.h"

namespace trivel3 {

std::vector<platform::PreferenceAccess::Setting> KavixPreferencesSettingsAccess::settings() const {
    std::vector<Setting> all;
    for (const auto& entry : SettingsCatalogue::entries)
        all.push_back({std::string(entry.key), entry.kind, entry.defaultValue()});
    return all;
}

std::optional<platform::Value> KavixPreferencesSettingsAccess::preferenceForKey(std::string_view key) const {
    return _store.preferenceForKey(key);
}

std::optional<platform::Value> KavixPreferencesSettingsAccess::storedValueForKey(std::string_view key) const {
    return _store.storedValueForKey(key);
}

void KavixPreferencesSettingsAccess::setPreferenceForKey(platform::Value value, std::string_view key) {
    _store.setPreferenceForKey(std::move(value), key);
}

void KavixPreferencesSettingsAccess::setPreferences(platform::Dictionary values) {
    _store.setPreferences(std::move(values));
}

std::vector<platform::PreferenceAccess::ObservedFile> KavixPreferencesSettingsAccess::observedFiles() const {
    return {{std::string(PreferenceStore::changeNotification), std::string(PreferenceStore::settingsFile)},
            {std::string(exceptions::changeNotification), std::string(exceptions::file)}};
}

}  // namespace trivel3

template void platform::addClass<trivel3::KavixPreferencesSettingsAccess>(ClassRegistry& classes);
