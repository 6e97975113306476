// SPDX-License-Identifier: MIT
#include <unistd.h>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/output_file.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/travel/xml_form.h"

namespace hosts::terminal {

int runExport(OpenedPhone& context, const ExportOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const auto stored = command->stored();
    if (!stored) return fail(failed, stored.error());
    const auto bytes = exportOf(*stored);
    if (!bytes) return fail(failed, bytes.error());
    if (options.output == "-") {
        print(::isatty(STDOUT_FILENO) == 1 ? printableLines(*bytes) : *bytes);
        return done;
    }
    const auto written = writeOutputFile(options.output, *bytes);
    return written ? done : fail(failed, written.error());
}

}  // namespace hosts::terminal
