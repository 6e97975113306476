// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "tests/kit/child_process.h"
#include "tests/terminal_screen/opened_screen.h"

namespace terminal_screen_test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(ScreenEnd, quitsWithTheTerminalAsItWas) {
    OpenedScreen screen;
    screen.terminal.press({"q"});
    EXPECT_EQ(screen.terminal.waitForEnd(), 0);
    EXPECT_TRUE(screen.terminal.isRestored());
    EXPECT_TRUE(screen.terminal.waitUntilGone("Multi-Center"));
}

TEST(ScreenEnd, signalsLeaveTheTerminalAsItWas) {
    for (const int number : {SIGTERM, SIGHUP, SIGQUIT}) {
        OpenedScreen screen;
        ::kill(screen.terminal.process(), number);
        EXPECT_EQ(screen.terminal.waitForEnd(), 128 + number) << number;
        EXPECT_TRUE(screen.terminal.isRestored()) << number;
    }
}

TEST(ScreenEnd, interruptQuits) {
    OpenedScreen screen;
    ::kill(screen.terminal.process(), SIGINT);
    EXPECT_EQ(screen.terminal.waitForEnd(), 0);
    EXPECT_TRUE(screen.terminal.isRestored());
}

TEST(ScreenEnd, interruptKeyLeavesTheTerminalAsItWas) {
    OpenedScreen screen;
    screen.terminal.press({"C-c"});
    EXPECT_TRUE(screen.terminal.waitForEnd().has_value());
    EXPECT_TRUE(screen.terminal.isRestored());
}

// Those of a crash are the sanitizers' own where they are at work.
constexpr int unexpectedSignals[] = {SIGUSR1, SIGALRM, SIGXCPU, SIGPIPE, SIGABRT, SIGSYS, SIGPROF, SIGIO, SIGVTALRM, 40,
#ifndef TRIVEL3_SANITIZED
                                     SIGSEGV, SIGBUS,  SIGILL,  SIGFPE
#endif
};

// Whatever ends the program, the next one finds the terminal as it should be.
TEST(ScreenEnd, unexpectedSignalsLeaveTheTerminalAsItWas) {
    for (const int number : unexpectedSignals) {
        Phone phone;
        TmuxTerminal terminal(program(phone), {});
        ASSERT_TRUE(terminal.waitFor("Quit"));
        ::kill(terminal.process(), number);
        EXPECT_EQ(terminal.waitForEnd(), 128 + number);
        EXPECT_TRUE(terminal.isRestored()) << number;
        EXPECT_TRUE(terminal.waitUntilGone("Multi-Center")) << number;
    }
}

// A connection that breaks off, or a window that is closed, leaves no program behind.
TEST(ScreenEnd, endsWithItsTerminal) {
    Phone phone;
    TmuxTerminal terminal(program(phone), {});
    ASSERT_TRUE(terminal.waitFor("Quit"));
    const std::filesystem::path process = "/proc/" + std::to_string(terminal.process()) + "/exe";
    ASSERT_TRUE(std::filesystem::exists(process));
    terminal.close();
    constexpr int tries = 400;
    for (int i = 0; i < tries && std::filesystem::exists(process); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(std::filesystem::exists(process));
}

// Nothing is written over the screen.
TEST(ScreenEnd, tellsAfterwardsWhatWasPassedOver) {
    Phone phone;
    std::filesystem::create_directories(phone.machinePath(settingsFile));
    TmuxTerminal terminal(program(phone, {"--verbose"}), {.width = 200});
    ASSERT_TRUE(terminal.waitFor("Quit"));
    terminal.settle();
    EXPECT_THAT(terminal.text(), Not(HasSubstr("skipped")));
    terminal.press({"q"});
    EXPECT_EQ(terminal.waitForEnd(), 0);
    EXPECT_TRUE(terminal.waitFor("skipped " + std::string(settingsFile) + ": it is a folder, not a regular file"));
}

TEST(ScreenEnd, suspendsAndGoesOn) {
    Phone phone;
    TmuxTerminal terminal({"bash", "--norc", "-i"}, {.environment = {{"PS1", "ready> "}}});
    ASSERT_TRUE(terminal.waitFor("ready>"));
    terminal.type("stty -g > settings-before; " TEST_PROGRAM " --phone '" + phone.folder() + "'\n");
    ASSERT_TRUE(terminal.waitFor("Quick Switcher"));
    terminal.press({"Down"});
    ASSERT_TRUE(terminal.waitFor("▸   Quick Switcher"));
    terminal.press({"C-z"});
    ASSERT_TRUE(terminal.waitFor("Stopped"));
    terminal.type("stty -g | cmp - settings-before && echo the same\n");
    EXPECT_TRUE(terminal.waitForRow("the same", "the same"));
    terminal.type("fg\n");
    ASSERT_TRUE(terminal.waitFor("▸   Quick Switcher"));
    terminal.press({"Space"});
    EXPECT_TRUE(phone.waitForStored("QuickSwitcher", platform::Value(false)));
    terminal.press({"q"});
    EXPECT_TRUE(terminal.waitFor("ready>"));
}

// Runs a shell's command; what it prints, and how it ends.
std::string outputOf(const std::string& command) {
    const kit::Outcome outcome = kit::ChildProcess({"/bin/sh", "-c", command}).finish();
    return outcome.output + "exit " + std::to_string(outcome.status);
}

TEST(NoScreen, printsTheRootPageAndSaysHowToGoOn) {
    Phone phone;
    const std::string command = "'" TEST_PROGRAM "' --phone '" + phone.folder() + "'";
    EXPECT_EQ(outputOf(command + " 2>/dev/null"), outputOf(command + " show"));
    EXPECT_THAT(outputOf(command + " 2>&1 >/dev/null"), StartsWith("trivel3ctl: no terminal for the interactive"));
    EXPECT_THAT(outputOf(command + " 2>&1 >/dev/null"), HasSubstr("show PAGE"));
}

TEST(NoScreen, printsTheRootPageOnATerminalThatCannotShowAScreen) {
    for (const char* kind : {"dumb", "no-such-terminal"}) {
        Phone phone;
        TmuxTerminal terminal(program(phone), {.kind = kind});
        EXPECT_EQ(terminal.waitForEnd(), 0);
        EXPECT_TRUE(terminal.waitFor("Fenwary Support"));
        EXPECT_TRUE(terminal.waitFor("trivel3ctl: ")) << kind;
    }
}

}  // namespace
}  // namespace terminal_screen_test
