// SPDX-License-Identifier: MIT
#include <algorithm>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"

namespace hosts::terminal {
namespace {

using platform::Dictionary;

OwnChange withoutKeys(const std::string& file, const Dictionary& held, const UnsetOptions& options) {
    OwnChange change{held, {}};
    if (options.all) change.content = {};
    for (const std::string& key : options.keys)
        change.content.remove(key);
    change.steps = historyEntries(file, held, change.content);
    return change;
}

}  // namespace

int runUnset(OpenedPhone& context, const UnsetOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const auto stored = command->stored();
    if (!stored) return fail(failed, stored.error());
    const Dictionary held = stored->settings.value_or(Dictionary());
    for (const std::string& key : options.keys) {
        if (!held.contains(key) && !command->findSetting(key)) return fail(wrongUsage, command->unknownKey(key));
    }
    const std::string file = command->settings().observedFiles().front().path;
    if (withoutKeys(file, held, options).steps.empty()) return done;
    OwnChanges changes = command->ownChanges();
    const auto removed = changes.change(file, [file, options](const Dictionary& newest) {
        return platform::Result(withoutKeys(file, newest, options));
    });
    return removed ? done : fail(failed, removed.error());
}

}  // namespace hosts::terminal
