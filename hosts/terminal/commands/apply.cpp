// SPDX-License-Identifier: MIT
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/input_file.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/travel/applied_settings.h"
#include "hosts/terminal/travel/settings_difference.h"
#include "hosts/terminal/travel/xml_form.h"

namespace hosts::terminal {
namespace {

using platform::Dictionary;
using platform::Done;
using platform::Result;

/// One of the phone's files, and what becomes of it.
struct FileChange {
    std::string path;
    std::optional<Dictionary> StoredSettings::*content;
    std::function<Dictionary(Dictionary held)> make;

    OwnChange of(const Dictionary& held) const {
        Dictionary after = make(held);
        auto steps = historyEntries(path, held, after);
        return {std::move(after), std::move(steps)};
    }
};

std::vector<FileChange> changesFor(const SettingsCommand& command, const AppliedSettings& applied) {
    const auto files = command.settings().observedFiles();
    return {{files.front().path, &StoredSettings::settings,
             [applied](Dictionary held) { return applied.settingsAfter(std::move(held)); }},
            {files.back().path, &StoredSettings::exceptions,
             [applied](Dictionary held) { return applied.exceptionsAfter(std::move(held)); }}};
}

// A file that the phone lacks is made where one is to come, though it be empty.
std::vector<FileChange> neededChanges(const SettingsCommand& command, const AppliedSettings& applied,
                                      const StoredSettings& before) {
    std::vector<FileChange> needed = changesFor(command, applied);
    std::erase_if(needed, [&](const FileChange& file) {
        const auto& held = before.*file.content;
        const bool isNew = !held && applied.stored.*file.content && applied.only.empty();
        return !isNew && file.of(held.value_or(Dictionary())).steps.empty();
    });
    return needed;
}

// A key that is nowhere is misspelt.
std::optional<std::string> misspeltKey(const SettingsCommand& command, const AppliedSettings& applied,
                                       const StoredSettings& before) {
    const auto holds = [](const std::optional<Dictionary>& file, const std::string& key) {
        return file && file->contains(key);
    };
    for (const std::string& key : applied.only) {
        const bool isThere = holds(applied.stored.settings, key) || holds(applied.stored.exceptions, key) ||
                             holds(before.settings, key) || holds(before.exceptions, key);
        if (!isThere && !command.findSetting(key)) return command.unknownKey(key);
    }
    return std::nullopt;
}

Result<Done> carryOut(const SettingsCommand& command, const std::vector<FileChange>& changes) {
    OwnChanges own = command.ownChanges();
    own.endTurn();
    for (const FileChange& file : changes) {
        const auto made = own.change(file.path, [file](const Dictionary& held) { return Result(file.of(held)); });
        if (!made) return made.error();
    }
    return Done();
}

}  // namespace

int runApply(OpenedPhone& context, const ApplyOptions& options) {
    auto stored = readSettingsInput(options.file);
    if (!stored) return fail(failed, stored.error());
    for (const auto& file : {stored->settings, stored->exceptions}) {
        const auto unsayable = file ? whatXmlCannotSay(*file) : std::nullopt;
        if (unsayable)
            return fail(wrongUsage, options.file + " holds " + *unsayable + ", which no settings file can say");
    }
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    auto before = command->stored();
    if (!before) return fail(failed, before.error());

    const AppliedSettings applied{*std::move(stored), {options.only.begin(), options.only.end()}, options.isExact};
    if (const auto misspelt = misspeltKey(*command, applied, *before)) return fail(wrongUsage, *misspelt);
    for (const std::string& sentence : applied.oddKinds(command->known()))
        warn(sentence);
    const std::vector<FileChange> changes = neededChanges(*command, applied, *before);
    StoredSettings after = *before;
    for (const FileChange& file : changes)
        after.*file.content = file.make(((*before).*file.content).value_or(Dictionary()));
    print(differenceText(differenceOf(*before, after, command->known())));
    if (options.isDryRun) return done;
    const auto carriedOut = carryOut(*command, changes);
    return carriedOut ? done : fail(failed, carriedOut.error());
}

}  // namespace hosts::terminal
