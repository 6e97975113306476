// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/terminal/commands/settings_command.h"

namespace hosts::terminal {

/// A setting of the catalogue, or one that the file alone has.
struct ListedSetting {
    std::string key;
    std::optional<platform::PreferenceAccess::Kind> kind = {};  ///< nothing for one that the pane does not know
    std::optional<platform::Value> standard = {};
    std::optional<platform::Value> stored = {};

    const std::optional<platform::Value>& value() const { return stored ? stored : standard; }
};

/// Those of these keys, in their order; without any, all, the pane's own first. A problem for a key that is neither
/// known nor stored.
platform::Result<std::vector<ListedSetting>> settingsNamed(SettingsCommand& command,
                                                           const std::vector<std::string>& keys);

}  // namespace hosts::terminal
