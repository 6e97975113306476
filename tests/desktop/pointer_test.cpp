// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QPointingDevice>
#include <QTest>
#include <memory>

#include "tests/desktop/desk.h"

namespace desktop_tests {

/// A mouse that only points, and one that scrolls.
class Pointing : public Desk {
protected:
    void pointAt(QQuickItem* item) {
        // Where it comes from matters: what does not move points at nothing.
        QTest::mouseMove(&view(), QPoint(3, 3));
        settle();
        QTest::mouseMove(&view(), item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
        settle();
    }
    QString tip() {
        for (QQuickItem* item : view().rootObject()->findChildren<QQuickItem*>()) {
            QAccessibleInterface* access = isShown(item) ? QAccessible::queryAccessibleInterface(item) : nullptr;
            if (access && access->role() == QAccessible::ToolTip) return access->text(QAccessible::Name);
        }
        return {};
    }
    QRgb groundOf(QQuickItem* item) {
        return view().grabWindow().pixel(item->mapToScene({item->width() / 2 + 20, 6}).toPoint());
    }
    double scrolled() {
        QQuickItem* const list = seenTable();
        return list->property("contentY").toDouble() - list->property("originY").toDouble();
    }
};

TEST_F(Pointing, isSeenOnTheRowUnderItAlone) {
    open();
    const QRgb before = groundOf(row("Quick Switcher"));
    pointAt(row("Quick Switcher"));
    EXPECT_NE(groundOf(row("Quick Switcher")), before);
    EXPECT_EQ(groundOf(row("Multi-Center")), before);
    pointAt(row("Multi-Center"));
    EXPECT_EQ(groundOf(row("Quick Switcher")), before);
    EXPECT_EQ(settings(), "");
}

TEST_F(Pointing, tellsWhatASignIsCalled) {
    open();
    EXPECT_EQ(tip(), "");
    pointAt(named(view().rootObject(), "Share"));
    EXPECT_TRUE(waitFor([this] { return tip() == "Share"; }));
    pointAt(row("Multi-Center"));
    EXPECT_TRUE(waitFor([this] { return tip().isEmpty(); })) << "all of that can be seen";
}

TEST_F(Pointing, tellsTheWholeOfALabelThatIsCutOff) {
    open();
    openPage({"Advanced Options"});
    view().resize(260, 200);
    session->window().setTextScale(3);
    ASSERT_TRUE(waitFor([this] { return view().rootObject()->width() == 260; }));
    QQuickItem* const back = named(view().rootObject(), "Back to Trivel 3");
    ASSERT_NE(back, nullptr);
    pointAt(back);
    EXPECT_TRUE(waitFor([this] { return tip() == "Back to Trivel 3"; }));
}

TEST_F(Pointing, dragsTheScrollBarToTheEndAndTapsNothing) {
    open();
    openPage({"Advanced Options"});
    const std::string before = settings();
    QQuickItem* const list = seenTable();
    const QPointF atThumb(list->width() - 5, 20);
    QTest::mouseMove(&view(), list->mapToScene(atThumb).toPoint());
    settle();
    drag(list, atThumb, {list->width() - 5, list->height() - 2});
    EXPECT_TRUE(list->property("atYEnd").toBool()) << scrolled();
    EXPECT_EQ(settings(), before);
    EXPECT_EQ(title(), "Advanced Options");
    drag(list, {list->width() - 5, list->height() - 20}, {list->width() - 5, 2});
    EXPECT_TRUE(list->property("atYBeginning").toBool()) << scrolled();
}

TEST_F(Pointing, aFingerAtTheEdgeStillTapsTheRow) {
    open();
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    QQuickItem* const line = row("Multi-Center");
    const QPoint at = line->mapToScene({line->width() - 4, line->height() / 2}).toPoint();
    QTest::touchEvent(&view(), finger.get()).press(0, at, &view());
    QTest::touchEvent(&view(), finger.get()).release(0, at, &view());
    settle();
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
}

}  // namespace desktop_tests
