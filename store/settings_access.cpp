// SPDX-License-Identifier: MIT
#include "store/settings_access.h"

#include "store/exceptions_file.h"
#include "store/settings_catalogue.h"

namespace trivel3 {
namespace {

using Kind = platform::PreferenceAccess::Kind;

Kind accessKind(SettingsCatalogue::Kind kind) {
    switch (kind) {
        case SettingsCatalogue::Kind::boolean:
            return Kind::boolean;
        case SettingsCatalogue::Kind::integer:
            return Kind::integer;
        case SettingsCatalogue::Kind::dictionary:
            break;
    }
    return Kind::dictionary;
}

}  // namespace

std::vector<platform::PreferenceAccess::Setting> KavixPreferencesSettingsAccess::settings() const {
    std::vector<Setting> all;
    for (const auto& entry : SettingsCatalogue::entries()) {
        all.push_back({std::string(entry.key), accessKind(entry.kind), entry.defaultValue()});
    }
    // Shown as a switch, but without a default: it reads as nothing until it is first set.
    all.push_back({"OpenToLastAppWithQS", Kind::boolean, std::nullopt});
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

std::vector<platform::PreferenceAccess::ObservedFile> KavixPreferencesSettingsAccess::observedFiles() const {
    return {{std::string(PreferenceStore::changeNotification), std::string(PreferenceStore::settingsFile)},
            {std::string(exceptions::changeNotification), std::string(exceptions::file)}};
}

}  // namespace trivel3
