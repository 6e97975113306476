// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "hosts/session/composers.h"
#include "hosts/session/settings_session.h"
#include "hosts/terminal/drive/event_log.h"
#include "hosts/terminal/drive/page_recorder.h"
#include "hosts/terminal/drive/recording_services.h"
#include "platform/foundation/result.h"

namespace hosts::terminal {

/// A session of the pane that a program drives, command by command. Settings files and notifications
/// are the phone's own; everything else that a page would do to the outside is an event.
class DriveSession {
public:
    /// What a driven session rests on; all of it outlives the session.
    struct Outside {
        platform::FileSystem& files;
        platform::DarwinNotifyCenter& notifications;
        platform::DeviceQuery& deviceQuery;
        std::string systemImage;
        const DeviceShape& device;
        platform::SkipListener* skips = nullptr;
    };

    DriveSession(const Outside& outside, std::set<std::string> openableSchemes);

    /// Loads the pane and opens its root page. False, with one line in `error`, when that fails.
    bool start(std::string& error);

    /// Carries out one command line and gives the answer.
    nlohmann::json answer(const std::string& line);

private:
    /// A problem, with a reason alone, for a command that was not carried out.
    using Outcome = platform::Result<platform::Done>;

    Outcome carryOut(const nlohmann::json& command);
    Outcome tap(const nlohmann::json& command);
    Outcome moveSwitch(const nlohmann::json& command);
    Outcome goBack();
    Outcome appear();
    Outcome reload();
    Outcome touchHeart();
    Outcome finishComposer(const nlohmann::json& command);

    nlohmann::json valueAnswer(const std::string& key) const;
    nlohmann::json pageAnswer(const Outcome& outcome, bool withViews);

    platform::UIViewController& page() const { return *_navigation.topViewController(); }

    EventLog _events;
    RecordingFileSystem _files;
    RecordingNotifyCenter _notifications;
    RecordingApplication _application;
    Composers _composers;
    SettingsSession _session;
    PageRecorder _recorder;
    std::shared_ptr<platform::PreferenceAccess> _access;
    platform::UINavigationController _navigation;
};

}  // namespace hosts::terminal
