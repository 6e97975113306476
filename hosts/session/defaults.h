// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/list/specifier.h"
#include "platform/services/preference_access.h"
#include "platform/ui/view_controller.h"

namespace hosts {

/// The pane's settings beside their defaults. Whether one is changed is looked up in the settings file each time, so it
/// is to be asked where a row's cell has just looked at it too: the answer then belongs to what the row shows.
class Defaults {
public:
    explicit Defaults(std::shared_ptr<platform::PreferenceAccess> access);

    /// Whether the file holds another value than the default, or one of another kind. A key that is absent stands at
    /// its default, and one that has none never differs.
    bool isChanged(std::string_view key) const;

    /// The setting that a row changes, by itself or together with others; nothing where it has no default.
    std::optional<std::string> settingOf(const platform::PSSpecifier& row) const;

    /// Whether what the row shows differs from its default: of rows that stand for values of one setting the one that
    /// is checked, of flags those that are not as they are by default.
    bool isChanged(const platform::PSSpecifier& row, bool isChecked) const;

    /// The settings of the rows that the page shows now, each once.
    std::vector<std::string> settingsOf(platform::UIViewController& page) const;

private:
    const platform::Value* defaultOf(std::string_view key) const;

    std::shared_ptr<platform::PreferenceAccess> _access;
    std::map<std::string, platform::Value, std::less<>> _defaults;
};

}  // namespace hosts
