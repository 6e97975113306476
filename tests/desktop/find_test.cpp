// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QTest>

#include "tests/desktop/desk.h"

namespace desktop_tests {

class FindInWindow : public Desk {
protected:
    hosts::desktop::Find& find() { return navigation().find(); }
    void type(const char* text) {
        for (const char* each = text; *each; ++each)
            QTest::keyClick(&view(), *each);
        settle();
    }
    QString hit(int number, int role = hosts::desktop::Find::TextRole) {
        return find().data(find().index(number), role).toString();
    }
    QString focusedRow() {
        auto* current =
            seenTable()->hasActiveFocus() ? seenTable()->property("currentItem").value<QQuickItem*>() : nullptr;
        return current ? current->property("text").toString() : QString();
    }
    // What those who cannot see the window are told of an item within it, by its name's beginning.
    QAccessibleInterface* told(QAccessibleInterface* within, const QString& name) {
        if (within->text(QAccessible::Name).startsWith(name)) return within;
        for (int i = 0; i < within->childCount(); ++i) {
            if (QAccessibleInterface* found = told(within->child(i), name)) return found;
        }
        return nullptr;
    }
    QAccessibleInterface* told(const QString& name) {
        return told(QAccessible::queryAccessibleInterface(&view()), name);
    }
};

TEST_F(FindInWindow, beginsWithCtrlFOrALetterAndEndsWithEscape) {
    open();
    press(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(find().isOpen());
    EXPECT_EQ(find().text(), "");
    EXPECT_TRUE(find().remark().contains("on all pages"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(find().isOpen());
    EXPECT_TRUE(seenTable()->hasActiveFocus());

    type("Ho");
    ASSERT_TRUE(find().isOpen());
    EXPECT_EQ(find().text(), "Ho");
    type("t c");
    EXPECT_EQ(find().text(), "Hot c");
    EXPECT_EQ(hit(0), "Hot Corners");
    press(Qt::Key_Escape);
    EXPECT_TRUE(find().isOpen());
    EXPECT_EQ(find().text(), "");
    press(Qt::Key_Escape);
    EXPECT_FALSE(find().isOpen());
    EXPECT_EQ(title(), "Trivel 3");
    EXPECT_EQ(settings(), "") << "what was typed has moved no switch";
}

TEST_F(FindInWindow, leavesSpaceToTheRowAndKeysToComposers) {
    open();
    session->window().showFocus();
    press(Qt::Key_Space);
    EXPECT_FALSE(find().isOpen());
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
    navigation().current()->touchRightItem();
    ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
    settle();
    press(Qt::Key_F, Qt::ControlModifier);
    type("x");
    EXPECT_FALSE(find().isOpen());
}

TEST_F(FindInWindow, enterOpensThePageAtTheRow) {
    open();
    const std::string before = settings();
    type("set volume");
    EXPECT_EQ(hit(0, hosts::desktop::Find::PlaceRole),
              "Trivel 3 › Advanced Options › Slider Actions › Tap Volume Icon to:");
    press(Qt::Key_Return);
    ASSERT_TRUE(waitFor([this] { return title() == "Slider Actions" && focusedRow() == "Set Volume to Minimum"; }))
        << title().toStdString() << ": " << focusedRow().toStdString();
    EXPECT_FALSE(find().isOpen());
    EXPECT_TRUE(view().rootObject()->property("showsFocus").toBool());
    EXPECT_EQ(settings().find("SliderActionsVolume"), std::string::npos) << "it is gone to, and not tapped";

    // From there to a page that lies elsewhere, by the arrows.
    type("the creators");
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_TRUE(waitFor([this] { return title() == "Trivel 3" && focusedRow() == "The Creators"; }))
        << title().toStdString() << ": " << focusedRow().toStdString();
    press(Qt::Key_Return);
    EXPECT_TRUE(waitFor([this] { return title() == "The Creators"; })) << "the keys act there";
}

TEST_F(FindInWindow, clickOpensAHitAndTypingGoesOnFromTheHits) {
    open();
    type("do not");
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    type(" disp");
    EXPECT_EQ(find().text(), "do not disp");
    EXPECT_EQ(hit(0), "Do Not Display");
    EXPECT_EQ(hit(1), "Do Not Display");
    EXPECT_NE(hit(0, hosts::desktop::Find::PlaceRole), hit(1, hosts::desktop::Find::PlaceRole));
    click(named(view().rootObject(), hit(1) + ", " + hit(1, hosts::desktop::Find::PlaceRole)));
    ASSERT_TRUE(waitFor([this] { return title() == "Quick Launcher" && focusedRow() == "Do Not Display"; }));
    EXPECT_EQ(table().data(table().index(seenTable()->property("currentIndex").toInt()),
                           hosts::desktop::TableModel::FirstRole),
              false)
        << "the one of the second section";
}

TEST_F(FindInWindow, repairsAndWritesNothing) {
    writeSettings("<key>AccessAppSwitcher</key><true/><key>PeopleInToday</key><true/><key>MultiCenter</key><false/>");
    const std::string before = settings();
    open();
    type("switcher");
    ASSERT_GT(find().rowCount(), 0);
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    EXPECT_EQ(settings(), before);
    const auto history = phone->history->history.read();
    EXPECT_TRUE(!history || history->entries.empty());
}

TEST_F(FindInWindow, isToldToThoseWhoCannotSeeIt) {
    open();
    type("set vol");
    QAccessibleInterface* const sheet = told("Find");
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->role(), QAccessible::Dialog);
    EXPECT_TRUE(sheet->state().modal);
    QAccessibleInterface* const hitTold = told("Set Volume to Minimum");
    ASSERT_NE(hitTold, nullptr);
    EXPECT_EQ(hitTold->role(), QAccessible::Button);
    EXPECT_TRUE(hitTold->text(QAccessible::Name).contains("Slider Actions"));
    EXPECT_EQ(told("Quick Switcher"), nullptr) << "what lies beneath is not told";
    hitTold->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(waitFor([this] { return title() == "Slider Actions"; }));
}

TEST_F(FindInWindow, typingGoesToTheApplicationOnAPageThatListsThem) {
    open();
    openPage({"Advanced Options", "Close All Apps"});
    type("maps");
    EXPECT_FALSE(find().isOpen());
    EXPECT_EQ(table().typed(), "maps");
    EXPECT_EQ(focusedRow(), "Maps");
    EXPECT_NE(told("maps"), nullptr);
    press(Qt::Key_Space);
    EXPECT_EQ(table().typed(), "");
    EXPECT_NE(settings().find("com.apple.Maps"), std::string::npos) << "Space is still the row's key";
    type("cam");
    EXPECT_EQ(focusedRow(), "Camera");
    type("q");
    EXPECT_TRUE(table().isTypedInVain());
    EXPECT_EQ(focusedRow(), "Camera");
    press(Qt::Key_Backspace);
    EXPECT_FALSE(table().isTypedInVain());
    press(Qt::Key_Escape);
    EXPECT_EQ(table().typed(), "");
    EXPECT_EQ(title(), "Close All Apps") << "Escape first clears";
    press(Qt::Key_F, Qt::ControlModifier);
    type("camera");
    EXPECT_EQ(hit(0), "Camera");
    press(Qt::Key_Return);
    EXPECT_TRUE(waitFor([this] { return focusedRow() == "Camera"; }));
}

}  // namespace desktop_tests
