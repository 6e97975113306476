// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/own_changes.h"
#include "hosts/session/settings_session.h"
#include "hosts/terminal/travel/stored_settings.h"

namespace hosts::terminal {

/// What the subcommands that name settings work with: the pane's settings by name, without its pages.
class SettingsCommand {
public:
    /// Loads the pane's bundle. A problem when that fails.
    static platform::Result<SettingsCommand> open(OpenedPhone& phone);

    platform::PreferenceAccess& settings() const { return *_access; }
    const std::vector<platform::PreferenceAccess::Setting>& known() const { return _known; }
    /// Null when the pane does not know the key.
    const platform::PreferenceAccess::Setting* findSetting(std::string_view key) const;
    /// Says that the pane does not know the key, and asks whether the nearest one was meant.
    std::string unknownKey(std::string_view key) const;

    /// How the reading and writing has gone since this was last asked. A problem when a file was not written or, for a
    /// reason that may pass, not read: what was read of it then is not its content.
    platform::Result<platform::Done> outcome();

    /// Runs the pane's write rule. A problem when the file was not written.
    platform::Result<platform::Done> write(std::string_view key, const platform::Value& value);
    /// The same for several keys, in one change.
    platform::Result<platform::Done> write(platform::Dictionary values);

    /// What the phone has stored. A problem where a file is there and cannot be read: it is not to be taken for none.
    platform::Result<StoredSettings> stored();

    /// Says on standard error why defaults are told in place of what the settings file may hold, where that is so.
    void tellDefaults();

    /// What is read from here on is read anew.
    void endTurn() { _session->drawn(); }

    /// What changes this phone's files by themselves, without the pane's rules.
    OwnChanges ownChanges() const;

    /// What the pane's files hold now.
    platform::DictionaryFiles& dictionaries() { return _session->platform().dictionaries; }

private:
    explicit SettingsCommand(OpenedPhone& phone) : _services(std::make_unique<LiveServices>(phone)) {}

    std::unique_ptr<LiveServices> _services;
    std::unique_ptr<SettingsSession> _session;
    std::shared_ptr<platform::PreferenceAccess> _access;
    std::vector<platform::PreferenceAccess::Setting> _known;
};

}  // namespace hosts::terminal
