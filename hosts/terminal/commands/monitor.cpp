// SPDX-License-Identifier: MIT
#include <cstdio>

#include "hosts/notifications/notification_stream.h"
#include "hosts/system/arriving_signals.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/observed_content.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/exit_status.h"
#include "hosts/terminal/render/value_json.h"

namespace hosts::terminal {
namespace {

// False when nobody can read it any more.
bool report(const std::string& notification, const std::vector<Change>& changes, bool json) {
    if (json) {
        nlohmann::json all = nlohmann::json::array();
        for (const Change& change : changes)
            all.push_back(changeJson(change));
        print(jsonLine({{"notification", notification}, {"changes", std::move(all)}}) + "\n");
    } else {
        print(notification + "\n");
        for (const Change& change : changes)
            print(changeText(change));
    }
    return std::fflush(stdout) == 0;
}

}  // namespace

int runMonitor(ProgramContext& context, const MonitorOptions& options) {
    SettingsCommand command(context);
    std::string error;
    if (!command.load(error)) return fail(failed, error);
    StopSignals stop;
    auto stream = command.notifications().observe();
    if (!stream) {
        return fail(failed,
                    stream.error().text() + "; start the monitor in the session whose changes it is to tell of");
    }
    std::vector<ObservedContent> observed;
    for (auto& file : command.settings().observedFiles())
        observed.emplace_back(context.files, std::move(file));
    std::fputs("listening\n", stderr);

    while (auto name = waitForNotification(**stream, stop.descriptor())) {
        for (ObservedContent& content : observed) {
            if (content.notification() != *name) continue;
            if (!report(*name, content.takeChanges(), options.json)) return failed;
        }
    }
    const auto& end = (*stream)->ended();
    return end ? fail(failed, end->text()) : done;
}

}  // namespace hosts::terminal
