// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hosts/notifications/notification_stream.h"
#include "hosts/terminal/screen/curses_terminal.h"
#include "hosts/terminal/screen/file_watch.h"
#include "hosts/terminal/screen/screen_signals.h"
#include "hosts/terminal/screen/settings_screen.h"

namespace hosts::terminal::screen {

/// Keeps a screen going: waits for the user, for signals and for other processes' changes at once.
class EventLoop {
public:
    /// All outlive the loop; `notifications` is null where there are none to listen to.
    struct Parts {
        SettingsScreen& screen;
        CursesTerminal& terminal;
        ScreenSignals& signals;
        FileWatch& files;
        std::unique_ptr<NotificationStream> notifications;
    };
    explicit EventLoop(Parts parts) : _parts(std::move(parts)) {}

    /// Returns when the user has quit, a signal has asked the program to end, or the terminal is gone.
    void run();

private:
    void paint();
    void wait();
    void takeInput();
    void takeSignals();
    void takeSignal(int number);
    void takeNotifications();
    void lookAtFiles();

    Parts _parts;
    Picture _picture;
    bool _isOver = false;
    bool _isPainted = false;
};

}  // namespace hosts::terminal::screen
