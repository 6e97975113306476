// SPDX-License-Identifier: MIT
#include "store/settings_catalogue.h"

#include <algorithm>

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
    const auto* found = std::ranges::find(entries, key, &Entry::key);
    return found == std::end(entries) ? std::nullopt : found->defaultValue();
}

}  // namespace trivel3
