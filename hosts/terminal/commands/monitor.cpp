// SPDX-License-Identifier: MIT
#include <poll.h>

#include <cerrno>
#include <cstdio>
#include <iterator>

#include "hosts/session/exit_status.h"
#include "hosts/system/arriving_signals.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/observed_content.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"

namespace hosts::terminal {
namespace {

// False when nobody can read it any more.
bool report(const std::string& notification, const std::vector<KeyChange>& changes, bool json) {
    if (json) {
        AnswerValues values;
        nlohmann::json all = nlohmann::json::array();
        for (const KeyChange& change : changes)
            all.push_back(changeJson(change, values));
        print(jsonLine({{"notification", notification}, {"changes", std::move(all)}}) + "\n");
    } else {
        print(notification + "\n");
        for (const KeyChange& change : changes)
            print(changeText(change));
    }
    return std::fflush(stdout) == 0;
}

// Waits for it; nothing when a signal asks the program to end, or nothing more will come. What has arrived goes first.
std::optional<PhoneEvent> nextEvent(PhoneEvents& events, const StopSignals& stop) {
    while (true) {
        if (auto event = events.next()) return event;
        if (events.whyNoNotifications()) return std::nullopt;
        pollfd watched[] = {{events.descriptor(), POLLIN, 0}, {stop.descriptor(), POLLIN, 0}};
        const int ready = ::poll(watched, std::size(watched), -1);
        if (ready < 0 && errno != EINTR) return std::nullopt;
        if (ready > 0 && watched[1].revents != 0) return std::nullopt;
    }
}

}  // namespace

int runMonitor(OpenedPhone& context, const MonitorOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    StopSignals stop;
    const auto events = context.phone->observe({});
    if (const auto& why = events->whyNoNotifications()) {
        return fail(failed, why->text() + "; start the monitor in the session whose changes it is to tell of");
    }
    std::vector<ObservedContent> observed;
    for (auto& file : command->settings().observedFiles())
        observed.emplace_back(command->dictionaries(), std::move(file));
    if (const auto read = command->outcome(); !read) return fail(failed, read.error());
    std::fputs("listening\n", stderr);

    while (const auto event = nextEvent(*events, stop)) {
        if (event->kind == PhoneEvent::Kind::gone) return fail(failed, "the phone is gone: " + event->name);
        for (ObservedContent& content : observed) {
            if (content.notification() != event->name) continue;
            const auto changes = content.takeChanges();
            // Of what could not be read, everything would seem to have been removed.
            if (const auto read = command->outcome(); !read) return fail(failed, read.error());
            if (!report(event->name, changes, options.json)) return failed;
        }
    }
    const auto& why = events->whyNoNotifications();
    return why ? fail(failed, *why) : done;
}

}  // namespace hosts::terminal
