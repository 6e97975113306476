// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QPointingDevice>
#include <QTest>
#include <memory>

#include "tests/desktop/desk.h"

namespace desktop_tests {

using hosts::desktop::Menu;
using hosts::desktop::TableModel;

/// A row's own menu, and what comes of resetting by it.
class ResetInAWindow : public Desk {
protected:
    Menu& menu() { return navigation().menu(); }
    QVariant item(int number, int role) { return menu().data(menu().index(number), role); }
    bool isOn(const QString& label) { return row(label)->property("isOn").toBool(); }
    bool isMarked(const QString& label) {
        return table().data(table().index(lineOf(label)), TableModel::ChangedRole).toBool();
    }
    void rightClick(const QString& label) {
        QQuickItem* const line = row(label);
        QTest::mouseClick(&view(), Qt::RightButton, {}, line->mapToScene({60, line->height() / 2}).toPoint());
        settle();
    }
    QQuickItem* button(const QString& name) { return named(view().rootObject(), name); }
    QQuickItem* entry(const QString& label) { return named(view().rootObject(), label); }
    void resetBy(const QString& label) {
        rightClick(label);
        click(entry("Reset to Default"));
    }
};

TEST_F(ResetInAWindow, writesTheDefaultAndIsUndoneFromTheToast) {
    writeSettings("<key>HotCorners</key><false/><key>Mine</key><true/>");
    open();
    resetBy("Hot Corners");
    EXPECT_TRUE(settingIs("HotCorners", "<true/>"));
    EXPECT_TRUE(settingIs("Mine", "<true/>"));
    EXPECT_TRUE(isOn("Hot Corners"));
    EXPECT_FALSE(isMarked("Hot Corners"));
    EXPECT_EQ(bannerText(), "Reset “Hot Corners”.");
    click(button("Undo"));
    EXPECT_TRUE(settingIs("HotCorners", "<false/>"));
    EXPECT_TRUE(settingIs("Mine", "<true/>"));
    EXPECT_FALSE(isOn("Hot Corners"));
    EXPECT_TRUE(isMarked("Hot Corners"));
    EXPECT_EQ(bannerText(), "Undone: HotCorners");
}

TEST_F(ResetInAWindow, isGreyedAtTheDefaultAndWhereThereIsNone) {
    writeSettings("<key>OpenToLastApp</key><true/><key>OpenToLastAppWithQS</key><true/>");
    open();
    rightClick("Hot Corners");
    ASSERT_EQ(menu().rowCount(), 1);
    EXPECT_EQ(item(0, Menu::LabelRole), "Reset to Default");
    EXPECT_EQ(item(0, Menu::UsableRole), false);
    press(Qt::Key_Return);
    EXPECT_TRUE(menu().isOpen()) << "nothing can be chosen";
    press(Qt::Key_Escape);
    EXPECT_FALSE(menu().isOpen());
    rightClick("Advanced Options");
    EXPECT_EQ(item(0, Menu::UsableRole), false);
    press(Qt::Key_Escape);
    openPage({"Advanced Options"});
    rightClick("Apply to Quick Switcher");
    EXPECT_EQ(item(0, Menu::UsableRole), false);
    press(Qt::Key_Escape);
    rightClick("Open to Last App");
    EXPECT_EQ(item(0, Menu::UsableRole), true);
}

TEST_F(ResetInAWindow, isReachedByTheMenuKeysAndGivesTheKeyboardBack) {
    writeSettings("<key>MultiCenter</key><false/><key>QuickSwitcher</key><false/>");
    open();
    session->window().showFocus();
    press(Qt::Key_Home);
    press(Qt::Key_Menu);
    ASSERT_TRUE(menu().isOpen());
    EXPECT_EQ(menu().title(), "Multi-Center");
    press(Qt::Key_Return);
    EXPECT_FALSE(menu().isOpen());
    EXPECT_TRUE(settingIs("MultiCenter", "<true/>"));
    EXPECT_TRUE(seenTable()->hasActiveFocus());
    press(Qt::Key_Down);
    press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(menu().title(), "Quick Switcher");
    press(Qt::Key_R);
    EXPECT_FALSE(menu().isOpen());
    EXPECT_TRUE(settingIs("QuickSwitcher", "<true/>")) << "by its letter";
}

TEST_F(ResetInAWindow, menuThatIsLeftDoesNothing) {
    writeSettings("<key>HotCorners</key><false/>");
    open();
    rightClick("Hot Corners");
    QTest::mouseClick(&view(), Qt::LeftButton, {}, QPoint(10, 10));
    settle();
    EXPECT_FALSE(menu().isOpen());
    EXPECT_TRUE(settingIs("HotCorners", "<false/>")) << "and neither does what lies beneath";
    EXPECT_TRUE(seenTable()->hasActiveFocus());
}

TEST_F(ResetInAWindow, menuOpensUnderALongTouchWhichIsNoTap) {
    writeSettings("<key>HotCorners</key><false/>");
    open();
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    QQuickItem* const line = row("Hot Corners");
    const QPoint at = line->mapToScene({60, line->height() / 2}).toPoint();
    QTest::touchEvent(&view(), finger.get()).press(0, at, &view());
    EXPECT_TRUE(waitFor([this] { return menu().isOpen(); }));
    QTest::touchEvent(&view(), finger.get()).release(0, at, &view());
    settle();
    EXPECT_TRUE(menu().isOpen());
    EXPECT_TRUE(settingIs("HotCorners", "<false/>"));
    // A short one is a tap still.
    press(Qt::Key_Escape);
    QTest::touchEvent(&view(), finger.get()).press(0, at, &view());
    QTest::touchEvent(&view(), finger.get()).release(0, at, &view());
    settle();
    EXPECT_TRUE(settingIs("HotCorners", "<true/>"));
}

TEST_F(ResetInAWindow, ofAGreyedRowIsThereToo) {
    writeSettings("<key>MultiCenter</key><false/><key>ReachabilityMode</key><false/>");
    open();
    openPage({"Advanced Options"});
    ASSERT_FALSE(row("Reachable Display")->property("usable").toBool());
    resetBy("Reachable Display");
    EXPECT_TRUE(settingIs("ReachabilityMode", "<true/>"));
}

// What a page would repair on appearing is not written, as for a change by another program.
TEST_F(ResetInAWindow, isFollowedByThePagesRulesWithoutARepair) {
    writeSettings("<key>MinimalControlCenterEnabled</key><false/><key>ReachabilityMode</key><true/>");
    open();
    openPage({"Advanced Options"});
    ASSERT_FALSE(shows("Always"));
    const std::string before = settings();
    resetBy("Minimal Display");
    EXPECT_TRUE(waitFor([this] { return lineOf("Always") >= 0; }));
    EXPECT_EQ(settings().find("MinimalControlCenterCondition") == std::string::npos,
              before.find("MinimalControlCenterCondition") == std::string::npos);
}

TEST_F(ResetInAWindow, ofThePagesIsOneTurn) {
    writeSettings(
        "<key>SliderActionsVolume</key><integer>0</integer><key>SliderActionsBrightness</key>"
        "<integer>2</integer><key>SliderActionsDisableHUD</key><true/><key>HotCorners</key><false/>");
    open();
    openPage({"Advanced Options", "Slider Actions"});
    const std::string before = settings();
    navigation().commands().run(hosts::desktop::Commands::ResetPage);
    settle();
    EXPECT_EQ(bannerText(), "Reset 2 settings.");
    EXPECT_TRUE(settingIs("SliderActionsVolume", "<integer>2"));
    EXPECT_TRUE(settingIs("SliderActionsDisableHUD", "<false/>"));
    EXPECT_TRUE(settingIs("SliderActionsBrightness", "<integer>2")) << "it is at its default";
    EXPECT_TRUE(settingIs("HotCorners", "<false/>")) << "it is another page's";
    EXPECT_TRUE(row("Switch to Ringer Volume")->property("marked").toBool());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(settings(), before);
}

TEST_F(ResetInAWindow, thatCannotBeSavedIsToldAndTheRowIsAsBefore) {
    writeSettings("<key>HotCorners</key><false/>");
    open();
    rightClick("Hot Corners");
    const std::string file = phoneFolder + "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    click(entry("Reset to Default"));
    EXPECT_TRUE(bannerText().startsWith("Not reset: ") || bannerText().startsWith("“Hot Corners” is at its default"))
        << bannerText().toStdString();
}

TEST_F(ResetInAWindow, isNotUndoneOnceTheKeyHoldsSomethingElse) {
    writeSettings("<key>HotCorners</key><false/>");
    open();
    session->watchFiles();
    resetBy("Hot Corners");
    writeSettings("<key>HotCorners</key><integer>5</integer>");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(bannerText().startsWith("Not undone: 'HotCorners' has been changed since"))
        << bannerText().toStdString();
    EXPECT_TRUE(navigation().banners().isProblem());
    EXPECT_TRUE(settingIs("HotCorners", "<integer>5"));
}

TEST_F(ResetInAWindow, isUndoneFromAnotherPageAndAfterAReload) {
    writeSettings("<key>HotCorners</key><false/>");
    open();
    resetBy("Hot Corners");
    openPage({"The Creators"});
    press(Qt::Key_F5);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(settingIs("HotCorners", "<false/>")) << bannerText().toStdString();
    press(Qt::Key_Escape);
    ASSERT_TRUE(waitFor([this] { return title() == "Trivel 3" && seenTable(); }));
    EXPECT_FALSE(isOn("Hot Corners"));
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(isOn("Hot Corners"));
}

TEST_F(ResetInAWindow, toastGoesByItselfButNotWhileItHasThePointerOrTheKeyboard) {
    constexpr int longEnough = 60000;  // ms
    writeSettings("<key>HotCorners</key><false/>");
    open();
    const auto isTold = [this] { return navigation().banners().isShown(); };
    resetBy("Hot Corners");
    ASSERT_TRUE(isTold());
    QQuickItem* const undo = button("Undo");
    QTest::mouseMove(&view(), undo->mapToScene({5, 5}).toPoint());
    // As long as it would have stayed, and more.
    constexpr int stay = 8000;  // ms
    QTest::qWait(stay);
    EXPECT_TRUE(isTold()) << "the pointer is on it";
    undo->forceActiveFocus();
    QTest::mouseMove(&view(), QPoint(20, 100));
    QTest::qWait(stay);
    EXPECT_TRUE(isTold()) << "it has the keyboard";
    seenTable()->forceActiveFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isTold(); }, longEnough));
}

}  // namespace desktop_tests
