// SPDX-License-Identifier: MIT
#include <QTest>
#include <algorithm>
#include <iterator>

#include "tests/desktop/desk.h"

namespace desktop_tests {

class Keyboard : public Desk {
protected:
    // The first key shows where the focus is, and does no more.
    void openWithFocusShown() {
        open();
        press(Qt::Key_Down);
    }
    bool isFocusShown() { return view().rootObject()->property("showsFocus").toBool(); }
    // Lines of the page, rows or not, that are in view as a whole.
    std::vector<QQuickItem*> linesInView() {
        auto all = lines();
        std::erase_if(all, [this](QQuickItem* line) { return !isInView(line); });
        return all;
    }
    bool isInView(QQuickItem* line) {
        const QRectF place = line->mapRectToItem(seenTable(), QRectF({0, 0}, line->size()));
        return place.top() >= -1 && place.bottom() <= seenTable()->height() + 1;
    }
    void noteRowsInView(QStringList& seen) {
        for (QQuickItem* line : linesInView()) {
            if (line->property("lineId").isValid()) seen.append(line->property("text").toString());
        }
    }
    QStringList allRows() {
        QStringList all;
        auto& model = table();
        for (int i = model.rowBeside(-1, 1); i >= 0; i = model.rowBeside(i, 1))
            all.append(model.data(model.index(i), hosts::desktop::TableModel::TextRole).toString());
        return all;
    }
    // Goes on by the key until that leads no further. How often it was pressed.
    int pressToTheEnd(Qt::Key key, QStringList& seen) {
        int presses = 0;
        for (QString before; before != focusedRow(); ++presses) {
            before = focusedRow();
            press(key);
            noteRowsInView(seen);
        }
        return presses;
    }
    QString focusedRow() {
        auto* current = seenTable()->property("currentItem").value<QQuickItem*>();
        return current ? current->property("text").toString() : QString();
    }
};

TEST_F(Keyboard, arrowsGoFromRowToRow) {
    openWithFocusShown();
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
    openWithFocusShown();
    press(Qt::Key_Space);
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
    press(Qt::Key_Return);
    EXPECT_TRUE(settingIs("MultiCenter", "<true/>"));
}

TEST_F(Keyboard, enterOpensAPageAndEscapeReturns) {
    openWithFocusShown();
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
    openWithFocusShown();
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
    openWithFocusShown();
    for (int i = 0; i < 4 && view().activeFocusItem()->property("name") != "Heart"; ++i)
        press(Qt::Key_Tab);
    ASSERT_EQ(view().activeFocusItem()->property("name").toString(), "Heart");
    press(Qt::Key_Return);
    EXPECT_TRUE(navigation().isComposerShown());
}

TEST_F(Keyboard, firstKeyOnlyShowsTheFocus) {
    for (Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Down, Qt::Key_End, Qt::Key_Tab}) {
        open();
        QQuickItem* const focused = view().activeFocusItem();
        press(key);
        EXPECT_TRUE(isFocusShown()) << key;
        EXPECT_EQ(view().activeFocusItem(), focused) << key;
        EXPECT_EQ(focusedRow(), "Multi-Center") << key;
        EXPECT_EQ(settings(), "") << key;
    }
    press(Qt::Key_Space);
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
}

TEST_F(Keyboard, firstKeyAfterTheMouseOnlyShowsTheFocusAgain) {
    openWithFocusShown();
    clickSwitch("Quick Switcher");
    const std::string before = settings();
    press(Qt::Key_Space);
    EXPECT_EQ(settings(), before);
    EXPECT_EQ(focusedRow(), "Quick Switcher");
    press(Qt::Key_Space);
    EXPECT_TRUE(settingIs("QuickSwitcher", "<true/>"));
}

TEST_F(Keyboard, firstKeyActsWhereTheFocusIsKnown) {
    open();
    session->window().showFocus();
    press(Qt::Key_Space);
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
}

TEST_F(Keyboard, modifiersShowNothing) {
    open();
    for (Qt::Key key : {Qt::Key_Control, Qt::Key_Alt, Qt::Key_Shift, Qt::Key_Meta, Qt::Key_AltGr}) {
        QKeyEvent pressed(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&view(), &pressed);
    }
    EXPECT_FALSE(isFocusShown());
}

TEST_F(Keyboard, shortcutsActAtOnce) {
    open();
    openPage({"Advanced Options"});
    press(Qt::Key_Escape);
    EXPECT_EQ(title(), "Trivel 3");
    openPage({"Advanced Options"});
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(title(), "Trivel 3");
    EXPECT_FALSE(isFocusShown());
}

TEST_F(Keyboard, focusThatIsShownIsOnTheScreen) {
    open();
    openPage({"Advanced Options"});
    QMetaObject::invokeMethod(seenTable(), "positionViewAtEnd");
    settle();
    press(Qt::Key_Down);
    auto* current = seenTable()->property("currentItem").value<QQuickItem*>();
    ASSERT_NE(current, nullptr);
    EXPECT_TRUE(isInView(current)) << focusedRow().toStdString();
}

TEST_F(Keyboard, rowThatIsScrolledAwayIsShownBeforeItIsActedUpon) {
    openWithFocusShown();
    QMetaObject::invokeMethod(seenTable(), "positionViewAtEnd");
    settle();
    press(Qt::Key_Space);
    EXPECT_EQ(settings(), "");
    EXPECT_EQ(focusedRow(), "Multi-Center");
    press(Qt::Key_Space);
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
}

TEST_F(Keyboard, heldKeyActsOnce) {
    openWithFocusShown();
    QTest::keyPress(&view(), Qt::Key_Space);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
        QCoreApplication::sendEvent(&view(), &repeated);
    }
    QTest::keyRelease(&view(), Qt::Key_Space);
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>")) << settings();
}

TEST_F(Keyboard, pageKeysPassNoRowOverUnseen) {
    openWithFocusShown();
    openPage({"Advanced Options"});
    QStringList seen;
    noteRowsInView(seen);
    const int down = pressToTheEnd(Qt::Key_PageDown, seen);
    EXPECT_EQ(focusedRow(), allRows().last());
    for (const QString& label : allRows())
        EXPECT_TRUE(seen.contains(label)) << label.toStdString();
    EXPECT_LT(down, allRows().size() / 2) << "it goes by pages";
    QStringList seenUp;
    noteRowsInView(seenUp);
    pressToTheEnd(Qt::Key_PageUp, seenUp);
    EXPECT_EQ(focusedRow(), allRows().first());
    for (const QString& label : allRows())
        EXPECT_TRUE(seenUp.contains(label)) << label.toStdString();
}

TEST_F(Keyboard, pageKeysPassNoRowOverInALowWindow) {
    openWithFocusShown();
    openPage({"Advanced Options"});
    view().resize(260, 200);
    ASSERT_TRUE(waitFor([this] { return view().rootObject()->height() == 200; }));
    settle();
    QStringList seen;
    noteRowsInView(seen);
    pressToTheEnd(Qt::Key_PageDown, seen);
    for (const QString& label : allRows())
        EXPECT_TRUE(seen.contains(label)) << label.toStdString();
}

TEST_F(Keyboard, rowBringsItsFooterAndTheFirstRowTheHeader) {
    openWithFocusShown();
    openPage({"Advanced Options"});
    for (std::size_t i = 1; i < 40; ++i) {
        press(Qt::Key_Down);
        const auto all = lines();
        const auto current = std::ranges::find(all, seenTable()->property("currentItem").value<QQuickItem*>());
        ASSERT_NE(current, all.end());
        ASSERT_NE(std::next(current), all.end()) << focusedRow().toStdString();
        const bool isFooter = (*std::next(current))->property("bare").isValid();
        EXPECT_TRUE(!isFooter || isInView(*std::next(current))) << focusedRow().toStdString();
    }
    press(Qt::Key_Escape);
    settle();
    press(Qt::Key_End);
    for (std::size_t i = 0; i < 10; ++i)
        press(Qt::Key_Up);
    EXPECT_EQ(focusedRow(), "Multi-Center");
    EXPECT_TRUE(seenTable()->property("atYBeginning").toBool());
}

TEST_F(Keyboard, focusIsDrawnForKeysAndNotForTheMouse) {
    open();
    press(Qt::Key_Down);
    EXPECT_TRUE(isFocusShown());
    const QImage withFocus = view().grabWindow();
    click(row("Quick Switcher"), QPointF(80, 22));
    EXPECT_FALSE(isFocusShown());
    EXPECT_NE(view().grabWindow(), withFocus);
}

}  // namespace desktop_tests
