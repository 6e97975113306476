// SPDX-License-Identifier: MIT
#include "hosts/terminal/travel/applied_settings.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "hosts/session/printable.h"
#include "hosts/terminal/render/kind_name.h"

namespace hosts::terminal {
namespace {

using platform::Dictionary;

Dictionary applied(const std::optional<Dictionary>& file, Dictionary held, const AppliedSettings& how) {
    const auto isTouched = [&how](const std::string& key) { return how.only.empty() || how.only.contains(key); };
    const Dictionary wanted = file.value_or(Dictionary());
    Dictionary after = held;
    for (const auto& [key, value] : wanted)
        if (isTouched(key)) after.set(key, value);
    if (!how.isExact) return after;
    for (const auto& entry : held)
        if (isTouched(entry.key) && !wanted.contains(entry.key)) after.remove(entry.key);
    return after;
}

}  // namespace

Dictionary AppliedSettings::settingsAfter(Dictionary held) const {
    return applied(stored.settings, std::move(held), *this);
}

Dictionary AppliedSettings::exceptionsAfter(Dictionary held) const {
    return stored.tellsExceptions ? applied(stored.exceptions, std::move(held), *this) : held;
}

std::vector<std::string> AppliedSettings::oddKinds(std::span<const platform::PreferenceAccess::Setting> known) const {
    std::vector<std::string> odd;
    const Dictionary touched = settingsAfter({});
    for (const auto& setting : known) {
        const platform::Value* const value = touched.find(setting.key);
        if (!value || isOfKind(*value, setting.kind)) continue;
        odd.push_back(inQuotes(setting.key) + " is of another kind than the pane's, which takes a " +
                      kindName(setting.kind));
    }
    return odd;
}

}  // namespace hosts::terminal
