// SPDX-License-Identifier: MIT
#include "tests/desktop/real_events.h"
#include "tests/kit/distance.h"
#include "tests/kit/ssh_host.h"

namespace desktop_tests {
namespace {

constexpr const char* preferencesChanged = "com.fenwary.trivel3.preferencesChanged";

/// The real program on a phone that is reached by its address, through a way that can fall silent.
class FarWindow : public RealEvents {
protected:
    void SetUp() override {
        RealEvents::SetUp();
        kit::writeText(host.phone() / "device-information.plist",
                       kit::settingsOf({{"ProductType", "<string>iPhone6,1</string>"}}));
        kit::writeSettings(host.phone(), kit::settingsOf({}));
        environment["TRIVEL3_SSH"] = host.ssh();
        phone = QString::fromStdString(host.address(way.port()));
    }

    bool phoneComesToHold(const char* key, const char* element) {
        return waitFor([&] { return holdsSetting(kit::readSettings(host.phone()), key, element); });
    }

    // By Escape, in the window that says so; whatever had the keyboard has it again.
    void stopWaiting() {
        ASSERT_TRUE(waitFor([this] { return display.windowTitle() == "Trivel 3"; }))
            << "nothing says what is waited for";
        display.focusWindow();
        display.press(Display::Escape);
        ASSERT_TRUE(waitFor([this] { return display.windowTitle() != "Trivel 3"; }));
        display.focusWindow();
    }

    kit::SshHost host;
    kit::Distance way{host.port(), std::chrono::milliseconds{1}};
};

TEST_F(FarWindow, changesThePhoneAndShowsWhatThePhoneChanges) {
    open();
    display.click(switchesOn(display.picture()).front().center());
    EXPECT_TRUE(phoneComesToHold("MultiCenter", "<false/>"));
    EXPECT_TRUE(waitFor([this] { return host.posted() == std::vector<std::string>{preferencesChanged}; }));
    ASSERT_TRUE(showsSwitchesOn(onAtFirst - 1));
    kit::writeSettings(host.phone(), kit::settingsOf({}));
    host.post(preferencesChanged);
    EXPECT_TRUE(showsSwitchesOn(onAtFirst));
}

TEST_F(FarWindow, tellsWhatItWaitsForAndGoesOnWhenTheUserStops) {
    open();
    way.fallSilent();
    display.click(switchesOn(display.picture()).front().center());
    stopWaiting();
    way.speakAgain();
    EXPECT_TRUE(showsSwitchesOn(onAtFirst)) << "what has not been saved is not shown";
    display.click(switchesOn(display.picture()).front().center());
    EXPECT_TRUE(phoneComesToHold("MultiCenter", "<false/>"));
}

TEST_F(FarWindow, connectingIsShownAndCanBeLeft) {
    way.fallSilent();
    start();
    waitForWindow();
    display.press(Display::Escape);
    ASSERT_TRUE(waitFor([this] { return program->hasEnded(); }));
    const kit::Outcome outcome = program->finish();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(kit::linesOf(outcome.errors).size(), 1U) << outcome.errors;
}

}  // namespace
}  // namespace desktop_tests
