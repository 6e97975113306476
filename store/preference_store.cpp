// SPDX-License-Identifier: MIT
#include "store/preference_store.h"

#include <utility>

#include "store/phone_property_list.h"
#include "store/settings_catalogue.h"

namespace trivel3 {

std::optional<platform::Value> PreferenceStore::storedValueForKey(std::string_view key) const {
    return readPhoneDictionaryEntry(_platform.files, settingsFile, key);
}

std::optional<platform::Value> PreferenceStore::preferenceForKey(std::string_view key) const {
    auto stored = storedValueForKey(key);
    return stored ? stored : SettingsCatalogue::defaultForKey(key);
}

void PreferenceStore::setPreferenceForKey(platform::Value value, std::string_view key) {
    platform::Dictionary content = currentContent();
    content.set(key, std::move(value));
    replaceContent(content);
}

void PreferenceStore::removePreferenceForKey(std::string_view key) {
    platform::Dictionary content = currentContent();
    content.remove(key);
    replaceContent(content);
}

platform::Dictionary PreferenceStore::currentContent() const {
    return readPhoneDictionary(_platform.files, settingsFile).value_or(platform::Dictionary());
}

void PreferenceStore::replaceContent(const platform::Dictionary& content) {
    writePhoneDictionary(_platform.files, settingsFile, content);
    _platform.notifications.postNotification(changeNotification);
}

}  // namespace trivel3
