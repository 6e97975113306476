// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/terminal/travel/stored_settings.h"
#include "platform/services/preference_access.h"

namespace hosts::terminal {

/// A setting that is another on the right than on the left. What is not stored stands at its default, so that it equals
/// a stored value of that kind and content.
struct SettingDifference {
    std::string key;
    std::optional<platform::Value> old;  ///< nothing where there is neither a stored value nor a default
    std::optional<platform::Value> now;
    bool isOldStored = false;
    bool isNowStored = false;
    bool isKnown = true;  ///< whether the pane knows the key
};

struct SettingsDifference {
    /// In the order of the catalogue, then what it lacks.
    std::vector<SettingDifference> settings;
    /// The applications that are ticked on one side alone, or otherwise; none where one side cannot tell.
    std::vector<SettingDifference> exceptions;

    bool isNone() const { return settings.empty() && exceptions.empty(); }
};

SettingsDifference differenceOf(const StoredSettings& left, const StoredSettings& right,
                                std::span<const platform::PreferenceAccess::Setting> known);

/// A line for each, as `monitor` has it, dictionaries entry by entry; nothing for no difference.
std::string differenceText(const SettingsDifference& difference);

/// [{"file","key","old","new","oldStored","newStored"}]. The files are those of settings and exceptions, in that order.
nlohmann::json differenceJson(const SettingsDifference& difference,
                              std::span<const platform::PreferenceAccess::ObservedFile> files);

}  // namespace hosts::terminal
