// SPDX-License-Identifier: MIT
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <iterator>
#include <optional>

#include "hosts/session/exit_status.h"
#include "hosts/system/arriving_signals.h"
#include "hosts/system/deadline.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/observed_content.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"

namespace hosts::terminal {
namespace {

// A program that announces its changes has done so by then.
constexpr std::chrono::seconds timeToAnnounce{2};

// False when nobody can read it any more. Without a notification for what was not announced.
bool report(const std::optional<std::string>& notification, const std::vector<KeyChange>& changes, bool json) {
    if (json) {
        AnswerValues values;
        nlohmann::json all = nlohmann::json::array();
        for (const KeyChange& change : changes)
            all.push_back(changeJson(change, values));
        const nlohmann::json name = notification ? nlohmann::json(*notification) : nlohmann::json();
        print(jsonLine({{"notification", name}, {"changes", std::move(all)}}) + "\n");
    } else {
        print(notification.value_or("unannounced") + "\n");
        for (const KeyChange& change : changes)
            print(changeText(change));
    }
    return std::fflush(stdout) == 0;
}

/// Tells of what the pane's files hold, as notifications come and, where that is asked for, as the files change.
class Monitor {
public:
    Monitor(SettingsCommand& command, PhoneEvents& events, bool json)
        : _command(command), _events(events), _json(json) {
        for (auto& file : command.settings().observedFiles())
            _files.push_back({ObservedContent(command.dictionaries(), std::move(file)), std::nullopt});
    }

    /// Until a signal asks for the end, nothing more comes, or nobody can read it any more. Gives the exit status.
    int run(const StopSignals& stop) {
        do {
            while (const auto event = isOver() ? std::nullopt : _events.next())
                take(*event);
            tellUnannounced();
            if (const auto& why = _events.whyNoNotifications(); why && !isOver()) end(*why);
        } while (!isOver() && waitForMore(stop));
        return _status.value_or(done);
    }

private:
    struct File {
        ObservedContent content;
        std::optional<Deadline> announcement;  ///< until when one may come for what it may hold
    };

    bool isOver() const { return _status.has_value(); }
    void end(const platform::Problem& problem) { _status = fail(failed, problem); }

    // False when a signal asks for the end.
    bool waitForMore(const StopSignals& stop) {
        int left = -1;
        for (const File& file : _files) {
            const int time = file.announcement ? file.announcement->left() : -1;
            if (time >= 0) left = left < 0 ? time : std::min(left, time);
        }
        pollfd watched[] = {{_events.descriptor(), POLLIN, 0}, {stop.descriptor(), POLLIN, 0}};
        const int ready = ::poll(watched, std::size(watched), left);
        return ready < 0 ? errno == EINTR : watched[1].revents == 0;
    }

    void take(const PhoneEvent& event) {
        if (event.isLoss()) return end({.reason = "the phone is gone: " + event.name});
        for (File& file : _files) {
            const bool isNotification = event.kind == PhoneEvent::Kind::notification;
            if (isNotification && file.content.notification() == event.name) {
                tell(file, event.name);
            } else if (!isNotification && file.content.path() == event.name && !file.announcement) {
                file.announcement = timeToAnnounce;
            }
        }
    }

    void tellUnannounced() {
        for (File& file : _files) {
            if (file.announcement && file.announcement->left() == 0) tell(file, std::nullopt);
        }
    }

    void tell(File& file, const std::optional<std::string>& notification) {
        if (isOver()) return;
        file.announcement.reset();
        _command.endTurn();
        const auto changes = file.content.takeChanges();
        // Of what could not be read, everything would seem to have been removed.
        if (const auto read = _command.outcome(); !read) return end(read.error());
        if (!notification && changes.empty()) return;
        // The program's end says why.
        if (!report(notification, changes, _json)) _status = failed;
    }

    SettingsCommand& _command;
    PhoneEvents& _events;
    bool _json;
    std::vector<File> _files;
    std::optional<int> _status;
};

}  // namespace

int runMonitor(OpenedPhone& context, const MonitorOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const StopSignals stop;
    std::vector<std::string> watched;
    std::vector<std::string> announced;
    for (const auto& file : command->settings().observedFiles()) {
        if (options.unannounced) watched.push_back(file.path);
        announced.push_back(file.notification);
    }
    const auto events = context.phone->observe(watched, announced);
    if (const auto& why = events->whyNoNotifications()) {
        return fail(failed, why->text() + "; start the monitor in the session whose changes it is to tell of");
    }
    Monitor monitor(*command, *events, options.json);
    if (const auto read = command->outcome(); !read) return fail(failed, read.error());
    std::fputs("listening\n", stderr);
    return monitor.run(stop);
}

}  // namespace hosts::terminal
