// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "hosts/session/settings_session.h"
#include "hosts/terminal/drive/event_log.h"
#include "hosts/terminal/drive/page_recorder.h"
#include "hosts/terminal/drive/recorders.h"
#include "platform/foundation/result.h"

namespace hosts::terminal {

/// A session of the pane that a program drives, command by command. Settings files and notifications
/// are the phone's own; everything else that a page would do to the outside is an event.
class DriveSession {
public:
    /// The services outlive the session, which has no use for the way to other programs.
    DriveSession(const SessionServices& outside, std::set<std::string> openableSchemes);

    /// Loads the pane and opens its root page.
    platform::Result<platform::Done> start(const std::string& systemImage, const DeviceShape& shape);

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
    Outcome touchRightButton();
    Outcome finishComposer(const nlohmann::json& command);

    nlohmann::json valueAnswer(const std::string& key) const;
    nlohmann::json pageAnswer(const Outcome& outcome, bool withViews);

    platform::UIViewController& page() const { return *_navigation.topViewController(); }

    SessionServices _outside;
    EventLog _events;
    FileRecorder _files;
    NotificationRecorder _notifications;
    UrlRecorder _application;
    std::unique_ptr<SettingsSession> _session;
    PageRecorder _recorder;
    std::shared_ptr<platform::PreferenceAccess> _access;
    platform::UINavigationController _navigation;
};

}  // namespace hosts::terminal
