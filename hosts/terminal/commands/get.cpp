// SPDX-License-Identifier: MIT
#include <unistd.h>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {

int runGet(OpenedPhone& context, const GetOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const auto value = command->settings().preferenceForKey(options.key);
    if (const auto read = command->outcome(); !read) return fail(failed, read.error());
    if (!value) {
        if (!command->findSetting(options.key)) return fail(failed, command->unknownKey(options.key));
        return fail(failed, inQuotes(options.key) + " is not set and has no default");
    }
    auto text = valueText(*value);
    if (!text) return fail(failed, inQuotes(options.key) + " holds what an XML property list cannot say");
    if (!text->ends_with('\n') || value->string()) *text += '\n';
    print(::isatty(STDOUT_FILENO) == 1 ? printableLines(*text) : *text);
    return done;
}

}  // namespace hosts::terminal
