// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include "tests/kit/distance.h"
#include "tests/kit/ssh_host.h"
#include "tests/terminal_screen/opened_screen.h"

namespace terminal_screen_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// The interactive screen of a phone that is reached by its address, through a way that can fall silent.
struct FarScreen : testing::Test {
    FarScreen() {
        host.nameModel("iPhone6,1");
        kit::writeSettings(host.phone(), kit::settingsOf({{"HotCorners", "<false/>"}}));
        terminal.emplace(std::vector<std::string>{TEST_PROGRAM},
                         TmuxTerminal::Setup{.environment = {{"TRIVEL3_PHONE", host.address(way.port())},
                                                             {"TRIVEL3_SSH", host.ssh()}}});
        EXPECT_TRUE(terminal->waitFor("Quit")) << terminal->text();
    }

    ~FarScreen() override {
        if (!terminal->hasEnded()) ::kill(terminal->process(), SIGTERM);
        EXPECT_TRUE(terminal->waitForEnd().has_value());
        EXPECT_TRUE(terminal->isRestored());
    }

    bool waitForPosts(std::size_t count) const {
        return waitUntil([&] { return host.posted().size() == count; });
    }

    kit::SshHost host;
    kit::Distance way{host.port(), std::chrono::milliseconds{1}};
    std::optional<TmuxTerminal> terminal;
};

TEST_F(FarScreen, changesThePhoneAndShowsWhatThePhoneChanges) {
    EXPECT_TRUE(terminal->waitForRow("Hot Corners  ", "off")) << terminal->text();
    terminal->press({"Enter"});
    EXPECT_TRUE(terminal->waitForRow("Multi-Center  ", "off")) << terminal->text();
    EXPECT_TRUE(waitForPosts(1));
    EXPECT_THAT(kit::readSettings(host.phone()), HasSubstr("<key>MultiCenter</key>\n\t<false/>"));
    kit::writeSettings(host.phone(), kit::settingsOf({{"HotCorners", "<true/>"}, {"MultiCenter", "<true/>"}}));
    host.post(kit::preferencesChanged);
    EXPECT_TRUE(terminal->waitForRow("Hot Corners  ", "on")) << terminal->text();
    EXPECT_TRUE(terminal->waitForRow("Multi-Center  ", "on")) << terminal->text();
}

TEST_F(FarScreen, tellsWhatItWaitsForAndGoesOnWhenTheUserStops) {
    way.fallSilent();
    terminal->press({"Enter"});
    ASSERT_TRUE(terminal->waitFor("Waiting for 127.0.0.1")) << terminal->text();
    EXPECT_TRUE(terminal->waitForRow("Waiting for", "Esc Stop"));
    EXPECT_TRUE(terminal->rowWith("Multi-Center  ").find("on ") != std::string::npos) << "what is seen stays";
    terminal->press({"Escape"});
    EXPECT_TRUE(terminal->waitFor("you have stopped")) << terminal->text();
    EXPECT_EQ(terminal->lineWith("Waiting for"), std::nullopt) << "nor does it begin to wait again by itself";
    EXPECT_THAT(host.posted(), IsEmpty());
    way.speakAgain();
    terminal->press({"Enter"});
    EXPECT_TRUE(waitForPosts(1)) << terminal->text();
    EXPECT_THAT(kit::readSettings(host.phone()), HasSubstr("<key>MultiCenter</key>\n\t<false/>"));
}

TEST_F(FarScreen, isQuitFromWhileItWaits) {
    way.fallSilent();
    terminal->press({"Enter"});
    ASSERT_TRUE(terminal->waitFor("Waiting for 127.0.0.1")) << terminal->text();
    terminal->press({"C-c"});
    EXPECT_EQ(terminal->waitForEnd(), 0);
}

}  // namespace
}  // namespace terminal_screen_test
