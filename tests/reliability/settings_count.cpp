// SPDX-License-Identifier: MIT
#include "settings_count.h"

#include <algorithm>

#include "platform/foundation/property_list.h"
#include "store/settings_catalogue.h"

namespace reliability_test {

namespace {

using platform::Dictionary;
using platform::Value;

Dictionary dictionaryOf(const std::string& bytes) {
    const auto reading = platform::readPropertyList(bytes);
    return reading && reading.value->dictionary() ? *reading.value->dictionary() : Dictionary();
}

bool holds(const Dictionary& content, const Dictionary::Entry& entry) {
    const Value* value = content.find(entry.key);
    return value != nullptr && *value == entry.value;
}

}  // namespace

std::string settingsNumber(int number) {
    Dictionary settings;
    for (const auto& entry : trivel3::SettingsCatalogue::entries)
        settings.set(entry.key, number);
    return *platform::writeXmlPropertyList(Value(settings)).bytes;
}

std::size_t settingsLost(const std::string& before, const std::string& wanted, const std::string& found) {
    if (found == before || found == wanted) return 0;
    const Dictionary old = dictionaryOf(before);
    const Dictionary young = dictionaryOf(wanted);
    const Dictionary now = dictionaryOf(found);
    return static_cast<std::size_t>(std::ranges::count_if(young, [&](const Dictionary::Entry& entry) {
        const Value* was = old.find(entry.key);
        return !holds(now, entry) && !(was != nullptr && holds(now, {entry.key, *was}));
    }));
}

}  // namespace reliability_test
