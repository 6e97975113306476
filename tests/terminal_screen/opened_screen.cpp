// SPDX-License-Identifier: MIT
#include "tests/terminal_screen/opened_screen.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "tests/kit/event.h"

namespace terminal_screen_test {

Phone::Phone(const platform::Dictionary& settings) {
    if (settings.size() > 0) put(settingsFile, settings);
    std::filesystem::copy(TRIVEL3_SAMPLE_PHONE "/Applications", machinePath("/Applications"),
                          std::filesystem::copy_options::recursive);
}

std::optional<platform::Value> Phone::stored(std::string_view key) const {
    const auto content = _phone.dictionary(settingsFile);
    return content ? content->valueForKey(key) : std::nullopt;
}

void Phone::store(std::string_view key, platform::Value value) {
    auto content = _phone.dictionary(settingsFile).value_or(platform::Dictionary());
    content.set(std::string(key), std::move(value));
    put(settingsFile, content);
}

bool Phone::waitForStored(std::string_view key, const platform::Value& value) const {
    return waitUntil([&] { return stored(key) == value; });
}

std::vector<std::string> program(const Phone& phone, const std::vector<std::string>& more) {
    std::vector<std::string> command{TEST_PROGRAM, "--phone", phone.folder()};
    command.insert(command.end(), more.begin(), more.end());
    return command;
}

OpenedScreen::OpenedScreen(const TmuxTerminal::Setup& setup, const platform::Dictionary& settings)
    : phone(settings), terminal(program(phone), setup) {
    terminal.waitFor("Quit");
    terminal.settle();
}

OpenedScreen::~OpenedScreen() {
    if (!terminal.hasEnded()) {
        ::kill(terminal.process(), SIGTERM);
        EXPECT_EQ(terminal.waitForEnd(), 128 + SIGTERM) << terminal.text();
    }
    EXPECT_TRUE(terminal.isRestored());
}

constexpr const char* goToHit = "Go there";

void OpenedScreen::find(const std::string& label) {
    terminal.press({"/"});
    terminal.type(label);
    EXPECT_TRUE(terminal.waitFor(goToHit));
    terminal.press({"Enter"});
    // What is found lies over the page.
    EXPECT_TRUE(terminal.waitUntilGone(goToHit));
}

bool OpenedScreen::open(const std::string& label, const std::string& title) {
    find(label);
    terminal.press({"Enter"});
    constexpr int tries = 400;
    for (int i = 0; i < tries; ++i) {
        const auto lines = terminal.lines();
        if (!lines.empty() && lines.front().find(title) != std::string::npos) {
            terminal.settle();
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
}

}  // namespace terminal_screen_test
