// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/desktop/program/settings_window.h"
#include "hosts/session/finder.h"
#include "hosts/session/settings_session.h"

namespace hosts::desktop {

/// The pane in a window: its pages, what draws them, and an eye on its files.
class DesktopSession {
public:
    /// What a session rests on; all of it outlives the session.
    struct Outside {
        OpenedPhone& phone;
        SessionServices services;
        HandOver& handOver;
        DeviceShape shape;
    };

    explicit DesktopSession(const Outside& outside)
        : _outside(outside), _finder(outside.phone), _navigation(outside.handOver) {}
    ~DesktopSession();

    /// Loads the pane and opens its root page in a window of this size, which is not shown yet.
    platform::Result<platform::Done> open(QSize size);

    /// Lets changes that other processes make to the pane's files be seen.
    void watchFiles();

    Navigation& navigation() { return _navigation; }
    SettingsWindow& window() { return *_window; }

private:
    void closeTurn();
    void showChange(const Page* acting);
    void tellUnsaved(const platform::Problem& problem, const std::function<bool()>& act);
    void tellDefaults(const std::optional<platform::Problem>& why);
    void takePhoneEvents();
    void noteLoss(const PhoneEvent& loss);
    void lookAtFiles();
    void bringUpToDate(Page& page);
    void showFilesAnew();
    void takeOnCommands();
    void offerToTakeBackTries();
    void forgetTries();
    void tellReset(const platform::Result<SettingsSession::DoneTurn>& outcome);
    void tellTakenBack(const platform::Result<std::string>& outcome);

    Outside _outside;
    std::unique_ptr<SettingsSession> _session;
    Finder _finder;
    Navigation _navigation;
    std::unique_ptr<SettingsWindow> _window;
    std::vector<std::string> _observedFiles;
    std::unique_ptr<PhoneEvents> _events;
    std::unique_ptr<QSocketNotifier> _eventsReady;
    /// What has not been saved since something was, and why defaults are shown, as it has been told.
    std::optional<platform::Problem> _unsaved;
    std::optional<platform::Problem> _defaults;
    /// Gathers the several events that one change of a folder makes.
    QTimer _soon;
};

}  // namespace hosts::desktop
