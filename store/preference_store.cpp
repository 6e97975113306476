// SPDX-License-Identifier: MIT
#include "store/preference_store.h"

#include <utility>

#include "store/phone_property_list.h"
#include "store/settings_catalogue.h"

namespace trivel3 {

std::optional<platform::Value> PreferenceStore::storedValueForKey(std::string_view key) const {
    return readPhoneDictionaryEntry(_platform.files, settingsFile, key);
}

platform::PropertyListNestedLookup PreferenceStore::storedEntryForKey(std::string_view key,
                                                                      std::string_view entry) const {
    return lookUpPhoneDictionaryEntry(_platform.files, settingsFile, key, entry);
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

void PreferenceStore::changePreferenceForKey(std::string_view key, const Change& change) {
    platform::Dictionary content = currentContent();
    const platform::Value* held = content.find(key);
    if (auto changed = change(held ? std::optional(*held) : std::nullopt)) {
        content.set(key, *std::move(changed));
    } else {
        content.remove(key);
    }
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
