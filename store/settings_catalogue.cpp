// SPDX-License-Identifier: MIT
#include "store/settings_catalogue.h"

namespace trivel3 {

std::optional<platform::Value> SettingsCatalogue::Entry::defaultValue() const {
    if (!defaultNumber) return std::nullopt;
    switch (kind) {
        case Kind::boolean:
            return platform::Value(*defaultNumber != 0);
        case Kind::integer:
            return platform::Value(*defaultNumber);
        case Kind::dictionary:
            break;
    }
    return platform::Value(platform::Dictionary());
}

std::optional<platform::Value> SettingsCatalogue::defaultForKey(std::string_view key) {
    const Entry* entry = find(key);
    return entry ? entry->defaultValue() : std::nullopt;
}

}  // namespace trivel3
