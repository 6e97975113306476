// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/exit_status.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {

int runGet(ProgramContext& context, const GetOptions& options) {
    SettingsCommand command(context);
    std::string error;
    if (!command.load(error)) return fail(failed, error);
    const auto value = command.settings().preferenceForKey(options.key);
    if (!value) {
        const std::string key = printable(options.key);
        if (command.findSetting(options.key)) return fail(failed, "'" + key + "' is not set and has no default");
        return fail(failed, "the settings hold no '" + key + "'; the nearest known key is '" +
                                command.nearestKey(options.key) + "'");
    }
    auto text = valueText(*value);
    if (!text) return fail(failed, "the value of '" + printable(options.key) + "' cannot be said in XML");
    if (!text->ends_with('\n') || value->string()) *text += '\n';
    print(*text);
    return done;
}

}  // namespace hosts::terminal
