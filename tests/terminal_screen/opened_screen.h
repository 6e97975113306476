// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/value.h"
#include "tests/kit/test_phone.h"
#include "tests/terminal_screen/tmux_terminal.h"

namespace terminal_screen_test {

inline constexpr const char* settingsFile = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";

/// A phone with the sample phone's applications, and with these settings or no settings file.
class Phone {
public:
    explicit Phone(const platform::Dictionary& settings = {});

    /// The folder of this machine that it is, and where a path of its own lies.
    std::string folder() const { return machinePath("/"); }
    std::filesystem::path machinePath(std::string_view path) const { return _phone.machinePath(path); }
    void put(std::string_view path, const platform::Dictionary& content) { _phone.put(path, content); }

    std::optional<platform::Value> stored(std::string_view key) const;
    /// Changes one key, as another process would.
    void store(std::string_view key, platform::Value value);
    /// Whether the key came to be stored with this value, in time.
    bool waitForStored(std::string_view key, const platform::Value& value) const;

private:
    kit::EventLog _log;
    kit::TestPhone _phone{_log};
};

/// trivel3ctl's command line for that phone, with what is given after it.
std::vector<std::string> program(const Phone& phone, const std::vector<std::string>& more = {});

/// The interactive screen of a phone of its own, with the root page on it.
struct OpenedScreen {
    explicit OpenedScreen(const TmuxTerminal::Setup& setup = {}, const platform::Dictionary& settings = {});

    /// Asks the program to end, where it has not, and fails the test when it does not end well.
    ~OpenedScreen();
    OpenedScreen(const OpenedScreen&) = delete;
    OpenedScreen& operator=(const OpenedScreen&) = delete;

    /// Puts the cursor onto the row with this text in its label.
    void find(const std::string& label);
    /// Finds the row and taps it; whether its page, or whatever has the title, then came.
    bool open(const std::string& label, const std::string& title);
    bool open(const std::string& title) { return open(title, title); }

    Phone phone;
    TmuxTerminal terminal;
};

}  // namespace terminal_screen_test
