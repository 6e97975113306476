// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/settings_command.h"

#include <algorithm>

#include "hosts/session/exit_status.h"
#include "hosts/session/nearest_spelling.h"
#include "hosts/session/stored_content.h"
#include "hosts/terminal/commands/told_defaults.h"
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
    const std::string nearest = nearestSpelling(key, keys);
    return inQuotes(key) + " is no known key" +
           (nearest.empty() ? "; 'trivel3ctl list' names them all" : didYouMean(nearest));
}

platform::Result<platform::Done> SettingsCommand::write(std::string_view key, const platform::Value& value) {
    _access->setPreferenceForKey(value, key);
    return outcome();
}

platform::Result<platform::Done> SettingsCommand::write(platform::Dictionary values) {
    _access->setPreferences(std::move(values));
    return outcome();
}

platform::Result<StoredSettings> SettingsCommand::stored() {
    platform::Platform& platform = _session->platform();
    const auto files = _access->observedFiles();
    auto settings = storedContent(platform.files, platform.dictionaries, files.front().path);
    if (!settings) return std::move(settings).error();
    auto exceptions = storedContent(platform.files, platform.dictionaries, files.back().path);
    if (!exceptions) return std::move(exceptions).error();
    return StoredSettings{*std::move(settings), *std::move(exceptions)};
}

void SettingsCommand::tellDefaults() {
    const std::vector<std::string> settings{_access->observedFiles().front().path};
    terminal::tellDefaults(_services->outcomes, _session->platform(), settings);
}

OwnChanges SettingsCommand::ownChanges() const {
    platform::Platform& platform = _session->platform();
    return {platform.files, platform.notifications, _services->history.recorder, _access->observedFiles()};
}

platform::Result<platform::Done> SettingsCommand::outcome() {
    _session->land();
    if (auto problem = _services->outcomes.takeProblem()) return *std::move(problem);
    return platform::Done();
}

}  // namespace hosts::terminal
