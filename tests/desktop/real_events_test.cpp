// SPDX-License-Identifier: MIT
#include "tests/desktop/real_events.h"

#include <signal.h>

#include "tests/desktop/desktop_portal.h"

namespace desktop_tests {
namespace {

TEST_F(RealEvents, switchThatIsClickedWritesTheFile) {
    open();
    display.click(switchesOn(display.picture()).front().center());
    EXPECT_TRUE(settingBecomes("MultiCenter", "<false/>")) << settings().toStdString();
    ASSERT_TRUE(showsSwitchesOn(onAtFirst - 1));
    display.click(switchesOn(display.picture()).back().center());
    EXPECT_TRUE(settingBecomes("HotCorners", "<false/>")) << settings().toStdString();
    EXPECT_TRUE(showsSwitchesOn(onAtFirst - 2));
}

// Events come in their order: what the last has done shows that those before it have been there.
TEST_F(RealEvents, switchFollowsADragAndARowDoesNot) {
    open();
    const auto switches = switchesOn(display.picture());
    const QPoint first = switches.front().center();
    display.drag(first, first + QPoint(200, 10));
    display.drag(first - QPoint(200, 0), first - QPoint(100, 0));
    display.drag(switches.at(1).center(), switches.at(1).center() - QPoint(120, -10));
    ASSERT_TRUE(settingBecomes("QuickSwitcher", "<false/>")) << settings().toStdString();
    EXPECT_FALSE(settings().contains("MultiCenter")) << settings().toStdString();
    display.click(first - QPoint(200, 0));
    EXPECT_TRUE(settingBecomes("MultiCenter", "<false/>")) << "a click on the row is for its switch";
}

TEST_F(RealEvents, firstKeyOnlyShowsTheFocus) {
    open();
    // No key twice in a row: so fast, that is one which is held.
    display.press(Display::Control);
    display.press(Display::Return);
    display.press(Display::Space);
    display.press(Display::Down);
    display.press(Display::Return);
    ASSERT_TRUE(settingBecomes("QuickSwitcher", "<false/>")) << settings().toStdString();
    EXPECT_TRUE(holdsSetting(settings().toStdString(), "MultiCenter", "<false/>")) << "moved once, not twice";
}

TEST_F(RealEvents, failedChangeIsToldAndTheSwitchIsAsBefore) {
    open();
    const QString file = phone + "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
    ASSERT_TRUE(QDir().mkpath(file + "/folder"));
    display.click(switchesOn(display.picture()).front().center());
    constexpr QRgb danger = qRgb(0xc9, 0x20, 0x1a);
    const auto shows = [this](QRgb colour) {
        const QImage picture = display.picture();
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixel(x, y) == colour) return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(waitFor([&] { return shows(danger); })) << "the mark of a problem";
    EXPECT_TRUE(waitFor([this] { return !switchesOn(display.picture()).empty(); }));
}

TEST_F(RealEvents, keysOpenAPageMoveASwitchAndGoBack) {
    open();
    openOptions();
    display.press(Display::Home);
    display.press(Display::Space);
    ASSERT_TRUE(settingBecomes("ReachabilityMode", "<false/>")) << settings().toStdString();
    display.press(Display::Escape);
    ASSERT_TRUE(showsSwitchesOn(onAtFirst));
    display.press(Display::Home);
    display.press(Display::Return);
    EXPECT_TRUE(settingBecomes("MultiCenter", "<false/>")) << settings().toStdString();
}

TEST_F(RealEvents, mouseAndKeysBothLeadBack) {
    open();
    openOptions();
    display.click(display.window().center(), Display::BackButton);
    ASSERT_TRUE(showsSwitchesOn(onAtFirst));
    openOptions();
    display.press(Display::Left, {Display::Alt});
    EXPECT_TRUE(showsSwitchesOn(onAtFirst));
}

TEST_F(RealEvents, mailIsOpenedAndCancelled) {
    open();
    display.press(Display::End);
    display.press(Display::End);
    display.press(Display::Return);
    ASSERT_TRUE(showsSwitchesOn(0)) << "the sheet lies over the page";
    display.press(Display::Escape);
    ASSERT_TRUE(waitFor([this] { return !switchesOn(display.picture()).empty(); }));
    display.press(Display::Home);
    display.press(Display::Space);
    EXPECT_TRUE(settingBecomes("MultiCenter", "<false/>")) << "the page has the keys again";
}

TEST_F(RealEvents, postIsOpenedAndCancelled) {
    open();
    constexpr QPoint heart(-30, 22);
    display.click(display.window().topRight() + heart);
    ASSERT_TRUE(showsSwitchesOn(0)) << "the page lies in the shade";
    display.press(Display::Escape);
    EXPECT_TRUE(showsSwitchesOn(onAtFirst));
}

TEST_F(RealEvents, wheelScrollsThePage) {
    open(onAtFirst, {"--size", "320x568"});
    const int top = display.window().top() + 44;
    // Turned until it is there: how far a turn goes differs from Qt to Qt, and turns of one moment may count as one.
    EXPECT_TRUE(waitFor([&] {
        display.click(display.window().center(), Display::WheelDown);
        const auto switches = switchesOn(display.picture());
        return switches.empty() || switches.front().top() < top + 100;
    }));
}

TEST_F(RealEvents, changeByAnotherProgramIsSeenAtOnce) {
    open();
    const QString preferences = phone + "/var/mobile/Library/Preferences/";
    ASSERT_TRUE(QDir().mkpath(preferences));
    QFile file(preferences + "new.plist");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<plist version=\"1.0\"><dict><key>QuickSwitcher</key><false/></dict></plist>");
    file.close();
    ASSERT_TRUE(file.rename(preferences + "com.fenwary.trivel3.plist"));
    EXPECT_TRUE(showsSwitchesOn(onAtFirst - 1));
}

// Not on the platform without a display, which complains when a window is to come forward.
TEST_F(RealEvents, windowOfAPhoneThatIsOpenIsTheOnlyOne) {
    open();
    // Reached by another path, it is the same phone.
    EXPECT_EQ(run({"--phone", phone + "/../phone/"}).status, 0);
    EXPECT_EQ(run({"file://" + phone}).status, 0) << "an address of the same folder";
    EXPECT_FALSE(program->hasEnded());
    EXPECT_TRUE(showsSwitchesOn(onAtFirst));
    // A page can be asked of it.
    EXPECT_EQ(run({phone, "--page", "Advanced Options"}).status, 0);
    ASSERT_TRUE(waitFor([this] { return switchesOn(display.picture()).size() != onAtFirst; }));
    display.press(Display::Home);
    display.press(Display::Space);
    EXPECT_TRUE(settingBecomes("ReachabilityMode", "<false/>")) << settings().toStdString();
}

TEST_F(RealEvents, openWindowTakesNoOtherOptionsAndSaysSo) {
    open();
    EXPECT_TRUE(messageOf({"--phone", phone, "--appearance", "dark"}).contains("this phone's window is open already"));
    EXPECT_TRUE(showsSwitchesOn(onAtFirst));
    EXPECT_TRUE(messageOf({"--phone", phone, "--page", "Nowhere"}).contains("leads to no page 'Nowhere'"));
    EXPECT_TRUE(showsSwitchesOn(onAtFirst));
}

// Whoever has started a program by its icon reads no line on standard error.
TEST_F(RealEvents, errorsAreDialogsWhereThereIsNoTerminal) {
    EXPECT_TRUE(messageOf({phone + "-not"}).contains(phone + "-not"));
    EXPECT_TRUE(messageOf({"--nonsense"}, 2).contains("--nonsense"));
    EXPECT_TRUE(messageOf({"sftp://elsewhere/phone"}, 2).contains("sftp://elsewhere/phone"));
    EXPECT_TRUE(messageOf({phone, "--page", "Advanced Options/Nowhere"}).contains("leads to no page 'Nowhere'"));
}

TEST_F(RealEvents, findGoesToARowOfAnotherPageAndUndoTakesBackWhatIsDoneThere) {
    open();
    display.press(Display::LetterF, {Display::Control});
    ASSERT_TRUE(showsSwitchesOn(0)) << "what is found lies over the page";
    display.type("hud");
    display.press(Display::Return);
    display.press(Display::Space);
    ASSERT_TRUE(settingBecomes("SliderActionsDisableHUD", "<true/>")) << settings().toStdString();
    ASSERT_TRUE(showsSwitchesOn(1));
    display.press(Display::LetterZ, {Display::Control});
    EXPECT_TRUE(showsSwitchesOn(0));
    EXPECT_TRUE(waitFor([this] { return !settings().contains("SliderActionsDisableHUD"); }))
        << settings().toStdString();
    display.type("hot");
    display.press(Display::Escape);
    display.press(Display::Escape);
    display.press(Display::Escape);
    EXPECT_TRUE(waitFor([this] { return !switchesOn(display.picture()).empty(); })) << "the page before is seen";
}

TEST_F(RealEvents, rowIsResetByItsMenuAndThatIsUndoneByTheWindows) {
    open();
    const QPoint changed = switchesOn(display.picture()).back().center();
    display.click(changed);
    ASSERT_TRUE(settingBecomes("HotCorners", "<false/>")) << settings().toStdString();
    display.click(changed - QPoint(200, 0), Display::RightButton);
    display.type("r");
    EXPECT_TRUE(settingBecomes("HotCorners", "<true/>")) << settings().toStdString();
    EXPECT_TRUE(showsSwitchesOn(onAtFirst));
    display.press(Display::F10);
    display.type("u");
    EXPECT_TRUE(settingBecomes("HotCorners", "<false/>")) << settings().toStdString();
}

TEST_F(RealEvents, sizeOfTextsIsKeptForTheNextWindow) {
    open();
    const auto first = [this] {
        const auto switches = switchesOn(display.picture());
        return switches.empty() ? -1 : switches.front().top();
    };
    const int usual = first();
    for (int i = 0; i < 4; ++i)
        display.press(Display::Equals, {Display::Control});
    ASSERT_TRUE(waitFor([&] { return first() > usual + 20; }));
    display.press(Display::LetterQ, {Display::Control});
    EXPECT_EQ(program->wait(), 0);
    start();
    waitForWindow();
    EXPECT_TRUE(waitFor([&] { return first() > usual + 20; }));
    display.press(Display::Digit0, {Display::Control});
    EXPECT_TRUE(waitFor([&] { return first() == usual; }));
}

TEST_F(RealEvents, anotherPhoneIsOpenedInAWindowOfItsOwn) {
    DesktopPortal portal(bus.address(), {});
    const QString other = pathOf("Bob's Phone");
    ASSERT_TRUE(QDir().mkpath(other + "/var"));
    portal.chooser().address = QUrl::fromLocalFile(other).toString(QUrl::FullyEncoded);
    open();
    EXPECT_EQ(display.windowTitle(), "phone – Trivel 3");
    display.press(Display::LetterO, {Display::Control});
    ASSERT_TRUE(waitFor([this] { return display.windowTitle() == "Bob's Phone – Trivel 3"; }))
        << display.windowTitle().toStdString();
    EXPECT_EQ(portal.chooser().asked.value("directory"), true);
    ASSERT_TRUE(waitFor([this] { return namesOnBus().filter("com.fenwary.trivel3.Settings.").size() == 2; }));
    display.focusWindow();
    display.press(Display::LetterQ, {Display::Control});
    ASSERT_TRUE(waitFor([this] { return display.windowTitle() == "phone – Trivel 3"; }));
    ASSERT_TRUE(waitFor([this] { return namesOnBus().filter("com.fenwary.trivel3.Settings.").size() == 1; }));
    end(*program);
    // The sample phone's window says what it is, and the page of phones has both that were open.
    phone.clear();
    environment["XDG_DATA_HOME"] = folder / "data";
    program.emplace(command({"--appearance", "light"}), environment);
    waitForWindow();
    EXPECT_EQ(display.windowTitle(), "Sample Phone – Trivel 3");
    QFile memory(pathOf("config/trivel3/trivel3-settings.ini"));
    ASSERT_TRUE(memory.open(QIODevice::ReadOnly));
    EXPECT_TRUE(memory.readAll().contains("Bob's Phone"));
}

TEST_F(RealEvents, windowThatDoesNotAnswerKeepsNobodyFromTheSettings) {
    open();
    ASSERT_TRUE(isListening());
    program->signal(SIGSTOP);
    const auto visitors = namesOnBus().filter(":").size();
    environment["QT_QPA_PLATFORM"] = "offscreen";
    kit::ChildProcess second(command({"--phone", phone}), environment);
    EXPECT_TRUE(waitFor([&] { return namesOnBus().filter(":").size() > visitors; }));
    end(second);
    EXPECT_TRUE(QFile::exists(pathOf("config/trivel3/trivel3-settings.ini"))) << "it had a window to remember";
    program->signal(SIGCONT);
}

TEST_F(RealEvents, windowOpensWhereThereIsNoSessionBus) {
    // Without an address, one may be looked for or even started.
    environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + (folder / "run/bus");
    open();
    EXPECT_FALSE(isListening());
    display.press(Display::LetterO, {Display::Control});
    EXPECT_TRUE(showsSwitchesOn(0)) << "where no chooser can be asked, the folder's path is asked for over the page";
}

TEST_F(RealEvents, lastPageIsThereAgain) {
    open();
    openOptions();
    display.press(Display::LetterQ, {Display::Control});
    EXPECT_EQ(program->wait(), 0);
    start();
    waitForWindow();
    ASSERT_TRUE(waitFor([this] { return !switchesOn(display.picture()).empty(); }));
    display.press(Display::Home);
    display.press(Display::Space);
    EXPECT_TRUE(settingBecomes("ReachabilityMode", "<false/>")) << settings().toStdString();
}

// A question is for the user; who ends the program from outside has none to answer it.
TEST_F(RealEvents, closingAsksForAPostThatWasChangedAndAnEndFromOutsideDoesNot) {
    open();
    const QRect window = display.window();
    display.click({window.right() - 25, window.top() + 22});
    ASSERT_TRUE(showsSwitchesOn(0)) << "they lie in the shade";
    // On the post's card, below that of the question: in the shade while there is one.
    const QPoint place = window.topLeft() + QPoint(30, 275);
    const auto isBright = [&] { return qGray(display.pixel(place)) > 220; };
    ASSERT_TRUE(waitFor(isBright));
    display.press(Display::LetterQ);
    display.press(Display::LetterQ, {Display::Control});
    ASSERT_TRUE(waitFor(std::not_fn(isBright)));
    display.press(Display::Escape);
    ASSERT_TRUE(waitFor(isBright)) << "the window has stayed";
    display.press(Display::LetterQ, {Display::Control});
    end(*program);
}

}  // namespace
}  // namespace desktop_tests
