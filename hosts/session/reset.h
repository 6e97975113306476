// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <vector>

#include "hosts/session/own_changes.h"
#include "platform/services/preference_access.h"

namespace hosts {

/// Writes their defaults over those of the settings that the file holds with another value, in one change of it that
/// begins a turn, as the program's own act. Those that are at their defaults already, or have none, stay as they are.
/// Gives what was done, which may be nothing; a problem when the file could not be read or changed.
platform::Result<std::vector<HistoryEntry>> resetSettings(OwnChanges changes,
                                                          const platform::PreferenceAccess& settings,
                                                          std::span<const std::string> keys);

/// Whether that would do anything as things are now.
bool wouldReset(platform::FileSystem& files, const platform::PreferenceAccess& settings,
                std::span<const std::string> keys);

}  // namespace hosts
