// SPDX-License-Identifier: MIT
#pragma once

#include "platform/services/preference_access.h"
#include "store/preference_store.h"

namespace trivel3 {

/// The catalogue and the store, for programs that read and set settings by name.
class KavixPreferencesSettingsAccess final : public platform::PreferenceAccess {
public:
    static constexpr const char* registeredName = "KavixPreferencesSettingsAccess";

    explicit KavixPreferencesSettingsAccess(platform::Platform& platform) : _store(platform) {}

    std::vector<Setting> settings() const override;
    std::optional<platform::Value> preferenceForKey(std::string_view key) const override;
    std::optional<platform::Value> storedValueForKey(std::string_view key) const override;
    void setPreferenceForKey(platform::Value value, std::string_view key) override;
    void setPreferences(platform::Dictionary values) override;
    std::vector<ObservedFile> observedFiles() const override;

private:
    PreferenceStore _store;
};

}  // namespace trivel3
