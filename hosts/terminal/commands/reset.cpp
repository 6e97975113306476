// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/exit_status.h"
#include "hosts/terminal/render/printable.h"

namespace hosts::terminal {
namespace {

using Setting = platform::PreferenceAccess::Setting;

// The settings that the command names, or why one of them cannot be reset.
std::optional<std::vector<const Setting*>> namedSettings(const SettingsCommand& command, const ResetOptions& options,
                                                         std::string& error) {
    std::vector<const Setting*> named;
    for (const Setting& setting : command.known()) {
        if (options.all && setting.defaultValue) named.push_back(&setting);
    }
    for (const std::string& key : options.keys) {
        const Setting* setting = command.findSetting(key);
        if (!setting) {
            error = command.unknownKey(key);
            return std::nullopt;
        }
        if (!setting->defaultValue) {
            error = inQuotes(key) + " has no default to go back to; give it a value with 'trivel3ctl set'";
            return std::nullopt;
        }
        named.push_back(setting);
    }
    return named;
}

}  // namespace

int runReset(ProgramContext& context, const ResetOptions& options) {
    SettingsCommand command(context);
    std::string error;
    if (!command.load(error)) return fail(failed, error);
    const auto settings = namedSettings(command, options, error);
    if (!settings) return fail(wrongUsage, error);
    for (const Setting* setting : *settings) {
        // A key that the file lacks stands at its default already, and writing it would make it stay there.
        if (!command.settings().storedValueForKey(setting->key)) continue;
        if (!command.write(setting->key, *setting->defaultValue, error)) return fail(failed, error);
    }
    return done;
}

}  // namespace hosts::terminal
