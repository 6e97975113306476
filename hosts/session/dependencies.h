// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "hosts/session/opened_phone.h"
#include "hosts/session/pane_rows.h"
#include "platform/foundation/value.h"
#include "platform/services/preference_access.h"

namespace hosts {

/// A setting that holds a number; of a boolean 1 for true and 0 for false.
struct SettingValue {
    std::string key;
    std::int64_t value = 0;
    bool operator==(const SettingValue&) const = default;
};

/// A row of a setting, and what is to hold for it to be there and usable: of each of these, one.
struct SettingRow : PaneRow {
    std::vector<std::vector<SettingValue>> dependsOn = {};
};

/// Every row of a setting that the pages of this phone's device can show, each page's in its order: as they are told
/// while `stored` is in the settings file, whose path is the other argument, or else as they are when they are there.
/// Of a setting that is a dictionary there is one row, without a label, for the applications that it ticks.
///
/// The pages themselves are asked, and nobody else: they are looked at with one setting after another changed, in
/// memory. Found is what depends on eight settings or fewer.
std::vector<SettingRow> rowsOfSettings(OpenedPhone& opened,
                                       std::span<const platform::PreferenceAccess::Setting> settings,
                                       const std::string& settingsFile, const platform::Dictionary& stored);

}  // namespace hosts
