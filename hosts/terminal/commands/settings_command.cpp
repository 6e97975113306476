// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/settings_command.h"

#include <algorithm>

#include "hosts/session/nearest_spelling.h"
#include "hosts/terminal/render/printable.h"

namespace hosts::terminal {

platform::Result<SettingsCommand> SettingsCommand::open(OpenedPhone& phone) {
    SettingsCommand command(phone);
    auto session = SettingsSession::load(command._services->forSession(), phone.installation.systemImage, phone.shape);
    if (!session) return std::move(session).error();
    command._session = *std::move(session);
    auto access = command._session->preferenceAccess();
    if (!access) return std::move(access).error();
    command._access = *std::move(access);
    command._known = command._access->settings();
    return command;
}

const platform::PreferenceAccess::Setting* SettingsCommand::findSetting(std::string_view key) const {
    auto found = std::ranges::find(_known, key, &platform::PreferenceAccess::Setting::key);
    return found == _known.end() ? nullptr : &*found;
}

std::string SettingsCommand::unknownKey(std::string_view key) const {
    std::vector<std::string> keys;
    for (const auto& setting : _known)
        keys.push_back(setting.key);
    return inQuotes(key) + " is no known key; did you mean '" + nearestSpelling(key, keys) + "'?";
}

platform::Result<platform::Done> SettingsCommand::write(std::string_view key, const platform::Value& value) {
    _access->setPreferenceForKey(value, key);
    return outcome();
}

OwnChanges SettingsCommand::ownChanges() const {
    platform::Platform& platform = _session->platform();
    return {platform.files, platform.notifications, _services->history.recorder, _access->observedFiles()};
}

platform::Result<platform::Done> SettingsCommand::outcome() {
    if (auto problem = _services->outcomes.takeProblem()) return *std::move(problem);
    return platform::Done();
}

}  // namespace hosts::terminal
