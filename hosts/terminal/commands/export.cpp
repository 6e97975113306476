// SPDX-License-Identifier: MIT
#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/output_file.h"
#include "hosts/terminal/commands/settings_command.h"

namespace hosts::terminal {

int runExport(OpenedPhone& context, const ExportOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const auto stored = command->stored();
    if (!stored) return fail(failed, stored.error());
    const auto bytes = exportOf(*stored);
    if (!bytes) return fail(failed, bytes.error());
    const auto written = writeOutput(options.output, *bytes);
    return written ? done : fail(failed, written.error());
}

}  // namespace hosts::terminal
