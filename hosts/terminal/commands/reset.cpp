// SPDX-License-Identifier: MIT
#include <utility>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"

namespace hosts::terminal {
namespace {

using Setting = platform::PreferenceAccess::Setting;

// The settings that the command names, or why one of them cannot be reset.
platform::Result<std::vector<std::string>> namedSettings(const SettingsCommand& command, const ResetOptions& options) {
    std::vector<std::string> named = options.keys;
    for (const Setting& setting : command.known()) {
        if (options.all && setting.defaultValue) named.push_back(setting.key);
    }
    for (const std::string& key : options.keys) {
        const Setting* setting = command.findSetting(key);
        if (!setting && command.settings().storedValueForKey(key)) {
            return platform::Problem{.reason = inQuotes(key) +
                                               " is stored, but no setting of the pane; 'trivel3ctl unset' removes it"};
        }
        if (!setting) return platform::Problem{.reason = command.unknownKey(key)};
        if (!setting->defaultValue) {
            return platform::Problem{.reason = inQuotes(key) +
                                               " has no default to go back to; give it a value with 'trivel3ctl set'"};
        }
    }
    return named;
}

}  // namespace

int runReset(OpenedPhone& context, const ResetOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const auto settings = namedSettings(*command, options);
    if (!settings) return fail(wrongUsage, settings.error());
    // A key that the file lacks stands at its default already, and writing it would make it stay there. One that it has
    // is written whatever it holds, for scripts that wait for the notification.
    platform::Dictionary defaults;
    for (const std::string& key : *settings) {
        if (command->settings().storedValueForKey(key)) defaults.set(key, *command->findSetting(key)->defaultValue);
    }
    if (const auto read = command->outcome(); !read) return fail(failed, read.error());
    if (defaults.empty()) return done;
    const auto written = command->write(std::move(defaults));
    return written ? done : fail(failed, written.error());
}

}  // namespace hosts::terminal
