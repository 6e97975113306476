// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "hosts/system/piped_process.h"

namespace hosts::desktop {

/// Says in a small window that the phone is waited for, and lets the user stop. It belongs to a process of its own:
/// the pages of this one are in the midst of something, so that none of its events may be handled meanwhile.
class WaitingWindow {
public:
    /// What the phone is called; any bytes.
    explicit WaitingWindow(const std::string& phone);

    /// For Waiting::Meanwhile. Short waits are not worth a window.
    bool waitOn(std::chrono::milliseconds waited);
    /// There is nothing to wait for any more.
    void close();

private:
    std::string _text;
    std::optional<PipedProcess> _window;
    bool _isShown = false;
};

/// The word by which the program is started for that window, before the text. No option: only the program itself says
/// it.
constexpr const char* waitingWindowWord = "--waiting-window";
/// What the program is then.
int runWaitingWindow(int argumentCount, char** arguments);

}  // namespace hosts::desktop
