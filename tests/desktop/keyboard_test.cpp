// SPDX-License-Identifier: MIT
#include <QTest>

#include "tests/desktop/desk.h"

namespace desktop_tests {

class Keyboard : public Desk {
protected:
    QString focusedRow() {
        auto* current = seenTable()->property("currentItem").value<QQuickItem*>();
        return current ? current->property("text").toString() : QString();
    }
};

TEST_F(Keyboard, arrowsGoFromRowToRow) {
    open();
    EXPECT_EQ(focusedRow(), "Multi-Center");
    press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(), "Quick Switcher");
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(), "Advanced Options");
    press(Qt::Key_Up);
    EXPECT_EQ(focusedRow(), "Hot Corners");
    press(Qt::Key_End);
    EXPECT_EQ(focusedRow(), "Fenwary Support");
    press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(), "Fenwary Support");
    press(Qt::Key_Home);
    EXPECT_EQ(focusedRow(), "Multi-Center");
}

TEST_F(Keyboard, rowWithTheFocusIsOnTheScreen) {
    open();
    openPage({"Advanced Options"});
    for (int i = 0; i < 40; ++i) {
        press(Qt::Key_Down);
        auto* current = seenTable()->property("currentItem").value<QQuickItem*>();
        ASSERT_NE(current, nullptr);
        const QRectF place = current->mapRectToItem(seenTable(), QRectF({0, 0}, current->size()));
        EXPECT_GE(place.top(), -0.5) << focusedRow().toStdString();
        EXPECT_LE(place.bottom(), seenTable()->height() + 0.5) << focusedRow().toStdString();
    }
}

TEST_F(Keyboard, spaceAndEnterMoveASwitch) {
    open();
    press(Qt::Key_Space);
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
    press(Qt::Key_Return);
    EXPECT_TRUE(settingIs("MultiCenter", "<true/>"));
}

TEST_F(Keyboard, enterOpensAPageAndEscapeReturns) {
    open();
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_TRUE(waitFor([this] { return title() == "Advanced Options"; }));
    press(Qt::Key_Escape);
    EXPECT_EQ(title(), "Trivel 3");
    settle();
    EXPECT_EQ(focusedRow(), "Advanced Options") << "the focus is where it was";
}

TEST_F(Keyboard, altLeftReturns) {
    open();
    openPage({"Advanced Options"});
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(title(), "Trivel 3");
}

TEST_F(Keyboard, escapeOnTheFirstPageDoesNothing) {
    open();
    press(Qt::Key_Escape);
    EXPECT_EQ(title(), "Trivel 3");
    EXPECT_TRUE(view().isVisible());
}

TEST_F(Keyboard, tabReachesEverythingInTurn) {
    open();
    openPage({"Advanced Options"});
    QStringList names;
    for (int i = 0; i < 6; ++i) {
        press(Qt::Key_Tab);
        names.append(view().activeFocusItem()->property("name").toString());
    }
    EXPECT_TRUE(names.contains("Back to Trivel 3")) << names.join(u',').toStdString();
    for (int i = 0; i < 6 && !seenTable()->hasActiveFocus(); ++i)
        press(Qt::Key_Tab);
    EXPECT_TRUE(seenTable()->hasActiveFocus());
}

TEST_F(Keyboard, tabAndEnterTouchTheHeart) {
    open();
    for (int i = 0; i < 4 && view().activeFocusItem()->property("name") != "Share"; ++i)
        press(Qt::Key_Tab);
    ASSERT_EQ(view().activeFocusItem()->property("name").toString(), "Share");
    press(Qt::Key_Return);
    EXPECT_TRUE(navigation().isComposerShown());
}

TEST_F(Keyboard, focusIsDrawnForKeysAndNotForTheMouse) {
    open();
    press(Qt::Key_Down);
    EXPECT_TRUE(view().rootObject()->property("showsFocus").toBool());
    const QImage withFocus = view().grabWindow();
    click(row("Quick Switcher"), QPointF(80, 22));
    EXPECT_FALSE(view().rootObject()->property("showsFocus").toBool());
    EXPECT_NE(view().grabWindow(), withFocus);
}

}  // namespace desktop_tests
