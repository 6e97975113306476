// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/notifications/session_notify_center.h"
#include "hosts/session/composers.h"
#include "hosts/session/quiet_services.h"
#include "hosts/session/settings_session.h"
#include "hosts/terminal/commands/watched_writes.h"
#include "hosts/terminal/program_context.h"

namespace hosts::terminal {

/// What the subcommands that name settings work with: the phone's files, the notification centre and
/// the pane's settings by name, without its pages.
class SettingsCommand {
public:
    explicit SettingsCommand(ProgramContext& context);

    /// Loads the pane's bundle. False, with one line in `error`, when that fails.
    bool load(std::string& error);

    platform::PreferenceAccess& settings() const { return *_access; }
    const std::vector<platform::PreferenceAccess::Setting>& known() const { return _known; }
    /// Null when the pane does not know the key.
    const platform::PreferenceAccess::Setting* findSetting(std::string_view key) const;
    /// The known key that is spelt most like this one.
    std::string nearestKey(std::string_view key) const;
    /// Says that the pane does not know the key, and asks whether the nearest one was meant.
    std::string unknownKey(std::string_view key) const;

    /// Runs the pane's write rule. False, with the reason in `error`, when the file was not written.
    bool write(std::string_view key, const platform::Value& value, std::string& error);

    SessionNotifyCenter& notifications() { return _notifications; }

private:
    std::string whyNotTried() const;

    ProgramContext& _context;
    WatchedWrites _files;
    SessionNotifyCenter _notifications;
    QuietApplication _application;
    QuietDeviceQuery _deviceQuery;
    Composers _composers;
    SettingsSession _session;
    std::shared_ptr<platform::PreferenceAccess> _access;
    std::vector<platform::PreferenceAccess::Setting> _known;
};

}  // namespace hosts::terminal
