// SPDX-License-Identifier: MIT
#include "tests/desktop/real_events.h"
#include "tests/kit/distance.h"
#include "tests/kit/ssh_host.h"

namespace desktop_tests {
namespace {

/// The real program on a phone that is reached by its address, through a way that can fall silent.
class FarWindow : public RealEvents {
protected:
    void SetUp() override {
        RealEvents::SetUp();
        host.nameModel("iPhone6,1");
        kit::writeSettings(host.phone(), kit::settingsOf({}));
        environment["TRIVEL3_SSH"] = host.ssh();
        phone = QString::fromStdString(host.address(way.port()));
    }

    bool phoneComesToHold(const char* key, const char* element) {
        return waitFor([&] { return holdsSetting(kit::readSettings(host.phone()), key, element); });
    }

    // By Escape, in each window that says so, until the program's own says what has become of it: first it may be the
    // look at the files that is waited for.
    void stopWaiting() {
        bool hasBeenTold = false;
        const bool isOver = waitFor([&] {
            const bool isWaiting = display.windowTitle() == "Trivel 3";
            if (isWaiting) {
                display.focusWindow();
                display.press(Display::Escape);
            }
            hasBeenTold = hasBeenTold || isWaiting;
            return !isWaiting && !patches(display.picture(), problemMark).empty();
        });
        EXPECT_TRUE(hasBeenTold) << "nothing says what is waited for";
        ASSERT_TRUE(isOver);
        display.focusWindow();
    }

    static constexpr QRgb problemMark = qRgb(0xc9, 0x20, 0x1a);

    kit::SshHost host;
    kit::Distance way{host.port(), std::chrono::milliseconds{1}};
};

TEST_F(FarWindow, changesThePhoneAndShowsWhatThePhoneChanges) {
    open();
    display.click(switchesOn(display.picture()).front().center());
    EXPECT_TRUE(phoneComesToHold("MultiCenter", "<false/>"));
    EXPECT_TRUE(waitFor([this] { return host.posted() == std::vector<std::string>{kit::preferencesChanged}; }));
    ASSERT_TRUE(showsSwitchesOn(onAtFirst - 1));
    kit::writeSettings(host.phone(), kit::settingsOf({}));
    host.post(kit::preferencesChanged);
    EXPECT_TRUE(showsSwitchesOn(onAtFirst));
}

TEST_F(FarWindow, tellsWhatItWaitsForAndGoesOnWhenTheUserStops) {
    open();
    const auto switches = switchesOn(display.picture());
    way.fallSilent();
    display.click(switches[0].center());
    stopWaiting();
    way.speakAgain();
    display.click(switches[1].center());
    EXPECT_TRUE(phoneComesToHold("QuickSwitcher", "<false/>"));
    // Where it was the look at the files that was waited for, the first click has done something after all.
    const bool isSaved = holdsSetting(kit::readSettings(host.phone()), "MultiCenter", "<false/>");
    EXPECT_TRUE(showsSwitchesOn(onAtFirst - (isSaved ? 2 : 1))) << "what has not been saved is not shown";
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

TEST_F(FarWindow, isOpenedBesideAnotherByItsAddress) {
    const QString address = std::exchange(phone, pathOf("near"));
    kit::writeText((phone + "/var/mobile/notes").toStdString(), "");
    program.emplace(command({phone, address, "--appearance", "light"}), environment);
    ASSERT_TRUE(waitFor([this] { return display.windowTitle().startsWith("127.0.0.1"); })) << "no such window";
    display.focusWindow();
    display.press(Display::LetterQ, {Display::Control});
    EXPECT_TRUE(waitFor([this] { return display.windowTitle().startsWith("near"); }));
}

}  // namespace
}  // namespace desktop_tests
