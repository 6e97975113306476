// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <span>
#include <string>
#include <vector>

#include "hosts/terminal/travel/stored_settings.h"
#include "platform/services/preference_access.h"

namespace hosts::terminal {

/// Settings that are to come onto a phone, and how.
struct AppliedSettings {
    StoredSettings stored;
    /// The keys, of settings and of exceptions, that are touched; empty for all.
    std::set<std::string, std::less<>> only;
    /// Whether what is not there is removed, as far as it could tell of it.
    bool isExact = false;

    /// What becomes of a phone's files.
    platform::Dictionary settingsAfter(platform::Dictionary held) const;
    platform::Dictionary exceptionsAfter(platform::Dictionary held) const;

    /// A sentence for each of the settings that is of another kind than the pane's.
    std::vector<std::string> oddKinds(std::span<const platform::PreferenceAccess::Setting> known) const;
};

}  // namespace hosts::terminal
