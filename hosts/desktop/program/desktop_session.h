// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "hosts/desktop/program/noted_files.h"
#include "hosts/desktop/program/settings_watch.h"
#include "hosts/desktop/program/settings_window.h"
#include "hosts/session/settings_session.h"

namespace hosts::desktop {

/// The pane in a window: its pages, what draws them, and an eye on its files.
class DesktopSession {
public:
    /// What a session rests on; all of it outlives the session.
    struct Outside {
        NotedFiles& files;
        SessionServices services;
        HandOver& handOver;
        std::string systemImage;
        std::string phoneFolder;
        DeviceShape shape;
    };

    explicit DesktopSession(const Outside& outside);
    ~DesktopSession();

    /// Loads the pane and opens its root page in a window of this size, which is not shown yet. False,
    /// with one line in `error`, when that fails.
    bool open(QSize size, std::string& error);

    /// Lets changes that other processes make to the pane's files be seen.
    void watchFiles();

    Navigation& navigation() { return _navigation; }
    SettingsWindow& window() { return *_window; }

private:
    Outside _outside;
    SettingsSession _session;
    Navigation _navigation;
    std::unique_ptr<SettingsWindow> _window;
    std::unique_ptr<SettingsWatch> _watch;
};

}  // namespace hosts::desktop
