// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QTest>

#include "hosts/desktop/model/banners.h"
#include "tests/desktop/desk.h"

namespace desktop_tests {

using hosts::desktop::Banner;

/// Banners before the user, on a page that stays usable.
class BannerInAWindow : public Desk {
protected:
    void tell(const QString& text, bool isProblem = true, Banner::About about = Banner::About::remark) {
        navigation().tell({.about = about, .text = text, .isProblem = isProblem});
        settle();
    }
    QQuickItem* shown() {
        QQuickItem* found = nullptr;
        for (QQuickItem* item : view().rootObject()->findChildren<QQuickItem*>()) {
            QAccessibleInterface* access = isShown(item) ? QAccessible::queryAccessibleInterface(item) : nullptr;
            if (access && access->role() == QAccessible::AlertMessage) found = item;
        }
        return found;
    }
    QString text() { return shown() ? QAccessible::queryAccessibleInterface(shown())->text(QAccessible::Name) : ""; }
    QString focusedButton() { return view().activeFocusItem()->property("name").toString(); }
    bool pageHasKeyboard() { return seenTable()->parentItem()->parentItem()->hasActiveFocus(); }
    void tabTo(const QString& button) {
        for (int i = 0; i < 8 && focusedButton() != button; ++i)
            press(Qt::Key_Tab);
        ASSERT_EQ(focusedButton(), button);
    }
    void openPost() {
        click(named(view().rootObject(), "Heart"));
        ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
        settle();
    }
};

TEST_F(BannerInAWindow, isReadAndClosed) {
    open();
    EXPECT_EQ(shown(), nullptr);
    tell("The phone is tired");
    EXPECT_EQ(text(), "The phone is tired");
    click(named(shown(), "Close"));
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(BannerInAWindow, leavesThePageItsKeysAndTouches) {
    open();
    session->window().showFocus();
    tell("The phone is tired");
    EXPECT_TRUE(seenTable()->hasActiveFocus());
    press(Qt::Key_Home);
    press(Qt::Key_Space);
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>")) << settings();
    clickSwitch("Multi-Center");
    EXPECT_TRUE(settingIs("MultiCenter", "<true/>")) << settings();
    EXPECT_EQ(text(), "The phone is tired");
}

TEST_F(BannerInAWindow, liesOverNoRow) {
    open();
    const double top = row("Multi-Center")->mapToScene({0, 0}).y();
    tell("The phone is tired");
    EXPECT_EQ(row("Multi-Center")->mapToScene({0, 0}).y(), top) << "nothing moves under the pointer";
    QQuickItem* last = row("Fenwary Support");
    EXPECT_LE(last->mapToScene({0, last->height()}).y(), shown()->mapToScene({0, 0}).y() + 0.5);
}

TEST_F(BannerInAWindow, isReachedAndLeftWithTheKeys) {
    open();
    session->window().showFocus();
    tell("The phone is tired");
    tabTo("Close");
    press(Qt::Key_Return);
    EXPECT_EQ(shown(), nullptr);
    EXPECT_TRUE(pageHasKeyboard());
    tell("The phone sleeps");
    openPage({"Advanced Options"});
    tabTo("Close");
    press(Qt::Key_Escape);
    EXPECT_EQ(shown(), nullptr) << "the key was for the banner";
    EXPECT_EQ(title(), "Advanced Options");
    press(Qt::Key_Escape);
    EXPECT_EQ(title(), "Trivel 3");
}

TEST_F(BannerInAWindow, actsOnceAndGoes) {
    open();
    int acts = 0;
    navigation().tell(
        {.about = Banner::About::change, .text = "Not saved", .isProblem = true, .action = "Try again", .act = [&] {
             ++acts;
         }});
    settle();
    click(named(shown(), "Try again"));
    EXPECT_EQ(acts, 1);
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(BannerInAWindow, withKeysActsToo) {
    open();
    int acts = 0;
    navigation().tell(
        {.about = Banner::About::change, .text = "Not saved", .isProblem = true, .action = "Try again", .act = [&] {
             ++acts;
         }});
    session->window().showFocus();
    tabTo("Try again");
    press(Qt::Key_Space);
    EXPECT_EQ(acts, 1);
    EXPECT_TRUE(pageHasKeyboard());
}

TEST_F(BannerInAWindow, ofSeveralShowsTheNewestProblemFirst) {
    open();
    tell("First problem");
    tell("Second problem");
    tell("News", false);
    EXPECT_EQ(text(), "Second problem");
    click(named(shown(), "Next"));
    EXPECT_EQ(text(), "First problem");
    click(named(shown(), "Next"));
    EXPECT_EQ(text(), "News");
    click(named(shown(), "Close"));
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(BannerInAWindow, takesThePlaceOfTheOneAboutTheSame) {
    open();
    tell("Not saved: no room", true, Banner::About::change);
    tell("Not saved: read-only", true, Banner::About::change);
    EXPECT_EQ(text(), "Not saved: read-only");
    EXPECT_EQ(navigation().banners().waiting(), 0);
}

TEST_F(BannerInAWindow, goesWithWhatItTold) {
    open();
    tell("A remark", false);
    tell("Not saved: no room", true, Banner::About::change);
    navigation().banners().withdraw(Banner::About::change);
    EXPECT_EQ(text(), "A remark");
    navigation().banners().withdraw(Banner::About::change);
    EXPECT_EQ(text(), "A remark");
}

TEST_F(BannerInAWindow, isThereOverAComposerToo) {
    open();
    openPost();
    tell("Not posted");
    EXPECT_EQ(text(), "Not posted");
    QTest::keyClick(&view(), '!');
    named(shown(), "Close")->forceActiveFocus();
    press(Qt::Key_Escape);
    EXPECT_EQ(shown(), nullptr);
    EXPECT_TRUE(navigation().isComposerShown()) << "the key was for the banner";
    QTest::keyClick(&view(), '?');
    click(named(view().rootObject(), "Post"));
    EXPECT_EQ(handOver.posted, std::vector<std::string>{"I'm loving #Trivel3 from @Fenwary!!?"});
}

TEST_F(BannerInAWindow, ofManyWordsLeavesRoomForThePageAndScrolls) {
    open();
    view().resize(260, 300);
    tell(QString("The phone is tired and wants to sleep. ").repeated(30));
    ASSERT_TRUE(waitFor([this] { return view().rootObject()->width() == 260; }));
    settle();
    EXPECT_LE(shown()->height(), 150);
    QQuickItem* close = named(shown(), "Close");
    ASSERT_NE(close, nullptr);
    EXPECT_LE(close->mapToScene({close->width(), close->height()}).x(), 260);
    EXPECT_LE(close->mapToScene({close->width(), close->height()}).y(), 300);
}

}  // namespace desktop_tests
