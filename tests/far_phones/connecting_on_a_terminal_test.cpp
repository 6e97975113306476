// SPDX-License-Identifier: MIT
// What ssh asks, where somebody sits before a terminal.
#include <sys/socket.h>

#include <filesystem>

#include "far_phone.h"
#include "tests/kit/distance.h"
#include "tests/kit/program_on_terminal.h"

namespace far_phones_test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::EndsWith;
using testing::Not;
using testing::StartsWith;

struct TerminalOf : ProgramOnTerminal {
    TerminalOf(const Trivel3ctl& program, const Trivel3ctl::Arguments& arguments)
        : ProgramOnTerminal(program.commandFor(arguments), program.environment()) {}

    /// What has been shown since the text, which is there.
    std::vector<std::string> linesAfter(const std::string& text) const {
        return linesOf(shown().substr(shown().rfind(text) + text.size()));
    }
};

constexpr const char* password = "Sesame-42-sesame";
constexpr const char* asksForPassword = "'s password: ";
constexpr const char* asksAboutKey = "(yes/no/[fingerprint])? ";

struct PhoneWithPassword : FarPhone {
    PhoneWithPassword() : FarPhone({.password = password}) {
        ctl.set("TRIVEL3_SSH", host.sshWithoutKey({"IdentityAgent none"}));
    }

    std::string shownBy(const Trivel3ctl::Arguments& arguments) const {
        TerminalOf program(ctl, arguments);
        program.waitFor(asksForPassword);
        program.type(std::string(password) + "\n");
        EXPECT_EQ(program.finish(), 0) << program.shown();
        return program.shown();
    }
};

TEST_F(PhoneWithPassword, isChangedAndReadAfterThePasswordHasBeenTypedOnce) {
    shownBy({"set", "HotCorners", "false"});
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_THAT(host.posted(), ElementsAre(preferencesChanged));
    EXPECT_THAT(shownBy({"get", "HotCorners"}), EndsWith("\r\nfalse\r\n"));
}

TEST_F(PhoneWithPassword, passwordIsNeitherShownNorOnAnyCommandLine) {
    TerminalOf monitor(ctl, {"monitor"});
    monitor.waitFor(asksForPassword);
    EXPECT_FALSE(monitor.echoes());
    monitor.type(std::string(password) + "\n");
    monitor.waitFor("listening");
    EXPECT_THAT(monitor.programs(), Contains(HasSubstr("ServerAliveInterval")));
    EXPECT_THAT(monitor.programs(), Each(Not(HasSubstr(password))));
    EXPECT_THAT(monitor.shown(), Not(HasSubstr(password)));
    monitor.type("\x03");
    EXPECT_EQ(monitor.finish(), 0);
}

TEST_F(PhoneWithPassword, isNotAskedAboutWithoutATerminal) {
    expectFailure(ctl.run({"get", "HotCorners"}, std::string(password) + "\n"), 1, "ssh-copy-id 127.0.0.1");
}

TEST_F(PhoneWithPassword, isNotConnectedWithByAnother) {
    TerminalOf program(ctl, {"set", "HotCorners", "false"});
    for (int times = 0; times < 3; ++times) {
        program.waitFor(asksForPassword);
        program.type("another\n");
    }
    EXPECT_EQ(program.finish(), 1);
    EXPECT_THAT(program.linesAfter(asksForPassword),
                ElementsAre("\r", AllOf(StartsWith("trivel3ctl: "), HasSubstr("no password was given that does"))));
    EXPECT_FALSE(std::filesystem::exists(host.phone().settingsFile()));
}

TEST_F(PhoneWithPassword, leavesTheTerminalAsItWasWhenItIsLeftAtThatQuestion) {
    TerminalOf program(ctl, {"get", "HotCorners"});
    program.waitFor(asksForPassword);
    program.type("\x03");
    EXPECT_EQ(program.finish(), -SIGINT);
    program.waitUntilAllAreGone();
    EXPECT_TRUE(program.echoes());
}

struct UnknownPhone : FarPhone {
    UnknownPhone() { writeText(host.inside("known_hosts"), ""); }
};

TEST_F(UnknownPhone, isConnectedWithAndKnownOnceItsKeyHasBeenSaidToBeRight) {
    TerminalOf program(ctl, {"set", "HotCorners", "false"});
    program.waitFor(host.fingerprint());
    program.waitFor(asksAboutKey);
    program.type("yes\n");
    EXPECT_EQ(program.finish(), 0) << program.shown();
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}}));
    expectDone(ctl.run({"get", "HotCorners"}));
}

TEST_F(UnknownPhone, whoseKeyIsNotRightIsLeftWithOneLine) {
    TerminalOf program(ctl, {"set", "HotCorners", "false"});
    program.waitFor(host.fingerprint());
    program.waitFor(asksAboutKey);
    program.type("no\n");
    EXPECT_EQ(program.finish(), 1);
    EXPECT_THAT(program.linesAfter(std::string(asksAboutKey) + "no\r\n"), ElementsAre(StartsWith("trivel3ctl: ")));
    EXPECT_EQ(readText(host.inside("known_hosts")), "");
    EXPECT_FALSE(std::filesystem::exists(host.phone().settingsFile()));
}

TEST(SilentPort, isLeftAtOnceByTheKeyThatInterruptsAndNothingStaysBehind) {
    std::uint16_t port = 0;
    const hosts::Descriptor listening = listenOnLoopback(port);
    Trivel3ctl ctl;
    ctl.set("TRIVEL3_PHONE", "ssh://127.0.0.1:" + std::to_string(port));
    ctl.set("TRIVEL3_SSH", "ssh -F none");
    TerminalOf program(ctl, {"get", "HotCorners"});
    program.waitFor("connecting to ssh://127.0.0.1");
    const hosts::Descriptor accepted{::accept4(listening.get(), nullptr, nullptr, SOCK_CLOEXEC)};
    ASSERT_TRUE(accepted.isOpen());
    program.type("\x03");
    EXPECT_EQ(program.finish(), -SIGINT);
    program.waitUntilAllAreGone();
}

TEST_F(FarPhone, thatFallsSilentWhileConnectingIsLeftAtOnceToo) {
    Distance way(host.port(), std::chrono::microseconds{0});
    way.fallSilent();
    use(way.port());
    TerminalOf program(ctl, {"get", "HotCorners"});
    program.waitFor("connecting to ssh://127.0.0.1");
    program.type("\x03");
    EXPECT_EQ(program.finish(), -SIGINT);
    program.waitUntilAllAreGone();
}

}  // namespace
}  // namespace far_phones_test
