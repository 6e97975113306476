// SPDX-License-Identifier: MIT
#include "hosts/session/undo.h"

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/history_text.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/standard_output.h"

namespace hosts::terminal {
namespace {

platform::Result<std::vector<HistoryEntry>> chosenChanges(OpenedPhone& context, const UndoOptions& options) {
    const auto history = context.history->history.read();
    if (!history) return history.error();
    if (!options.changes.empty()) return changesNamed(*history, options.changes);
    auto changes = lastTurn(*history);
    if (changes.empty()) return platform::Problem{.reason = "there is nothing to undo"};
    return changes;
}

}  // namespace

int runUndo(OpenedPhone& context, const UndoOptions& options) {
    const auto changes = chosenChanges(context, options);
    if (!changes) return fail(failed, changes.error());
    const auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    Undo undo(command->ownChanges());
    if (!options.force) {
        if (const auto why = undo.obstacle(*changes))
            return fail(failed, why->text() + " (--force undoes it all the same)");
    }
    const auto steps = undo.takeBack(*changes, options.force ? Undo::Newer::isOverwritten : Undo::Newer::stays);
    if (!steps) return fail(failed, steps.error());
    for (const HistoryEntry& step : *steps)
        print(changeSummary(step) + "\n");
    return done;
}

}  // namespace hosts::terminal
