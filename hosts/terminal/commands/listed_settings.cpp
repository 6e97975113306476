// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/listed_settings.h"

#include <algorithm>

namespace hosts::terminal {
namespace {

std::vector<ListedSetting> allSettings(SettingsCommand& command) {
    std::vector<ListedSetting> all;
    for (const auto& setting : command.known()) {
        all.push_back(
            {setting.key, setting.kind, setting.defaultValue, command.settings().storedValueForKey(setting.key)});
    }
    const auto content = command.dictionaries().read(command.settings().observedFiles().front().path);
    if (!content) return all;
    for (const auto& [key, value] : *content) {
        if (!command.findSetting(key)) all.push_back({.key = key, .stored = value});
    }
    return all;
}

}  // namespace

platform::Result<std::vector<ListedSetting>> settingsNamed(SettingsCommand& command,
                                                           const std::vector<std::string>& keys) {
    std::vector<ListedSetting> all = allSettings(command);
    if (keys.empty()) return all;
    std::vector<ListedSetting> named;
    for (const std::string& key : keys) {
        const auto setting = std::ranges::find(all, key, &ListedSetting::key);
        if (setting == all.end()) return platform::Problem{.reason = command.unknownKey(key)};
        named.push_back(*setting);
    }
    return named;
}

}  // namespace hosts::terminal
