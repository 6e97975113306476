// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QTest>

#include "tests/desktop/desk.h"

namespace desktop_tests {

using hosts::desktop::Commands;
using hosts::desktop::Menu;

/// The window's menu, its sheets, and the size of its texts.
class WindowMenu : public Desk {
protected:
    Menu& menu() { return navigation().menu(); }
    Commands& commands() { return navigation().commands(); }
    QStringList items(bool areUsable) {
        QStringList labels;
        for (int i = 0; i < menu().rowCount(); ++i) {
            if (menu().data(menu().index(i), Menu::UsableRole) == areUsable)
                labels.append(menu().data(menu().index(i), Menu::LabelRole).toString());
        }
        return labels;
    }
    QQuickItem* shown(const QString& name) { return named(view().rootObject(), name); }
    QAccessibleInterface* told(QAccessibleInterface* within, const QString& name) {
        if (within->text(QAccessible::Name) == name) return within;
        for (int i = 0; i < within->childCount(); ++i) {
            if (QAccessibleInterface* found = told(within->child(i), name)) return found;
        }
        return nullptr;
    }
    QAccessibleInterface* told(const QString& name) {
        return told(QAccessible::queryAccessibleInterface(&view()), name);
    }
    double textScale() { return view().rootObject()->property("textScale").toDouble(); }
};

TEST_F(WindowMenu, opensFromItsButtonAndGreysWhatCannotBeDone) {
    open();
    click(shown("Menu"));
    ASSERT_TRUE(menu().isOpen());
    EXPECT_EQ(items(true), (QStringList{"Find…", "Reload", "Keyboard Shortcuts", "Open Phone…", "About Trivel 3"}));
    EXPECT_EQ(items(false), (QStringList{"Undo", "Redo", "Reset Page"}));
    press(Qt::Key_Escape);
    EXPECT_FALSE(menu().isOpen());
    clickSwitch("Hot Corners");
    click(shown("Menu"));
    EXPECT_EQ(items(false), QStringList{"Redo"});
    click(shown("Undo"));
    EXPECT_FALSE(settingIs("HotCorners", "<false/>"));
    click(shown("Menu"));
    EXPECT_EQ(items(false), (QStringList{"Undo", "Reset Page"}));
}

TEST_F(WindowMenu, isGoneThroughWithTheKeysRoundItsEnds) {
    open();
    press(Qt::Key_F10);
    ASSERT_TRUE(menu().isOpen());
    EXPECT_EQ(view().activeFocusItem()->property("label"), "Find…");
    press(Qt::Key_Down);
    EXPECT_EQ(view().activeFocusItem()->property("label"), "Reload") << "what is greyed is passed over";
    press(Qt::Key_End);
    EXPECT_EQ(view().activeFocusItem()->property("label"), "About Trivel 3");
    press(Qt::Key_Down);
    EXPECT_EQ(view().activeFocusItem()->property("label"), "Find…");
    press(Qt::Key_Up);
    EXPECT_EQ(view().activeFocusItem()->property("label"), "About Trivel 3");
    press(Qt::Key_Home);
    press(Qt::Key_Return);
    EXPECT_FALSE(menu().isOpen());
    EXPECT_TRUE(navigation().find().isOpen());
}

TEST_F(WindowMenu, itemsAreChosenByTheirLetters) {
    open();
    press(Qt::Key_F10);
    press(Qt::Key_U);
    EXPECT_TRUE(menu().isOpen()) << "there is nothing to undo";
    press(Qt::Key_K);
    EXPECT_FALSE(menu().isOpen());
    EXPECT_EQ(commands().sheet(), Commands::KeysSheet);
    press(Qt::Key_Escape);
    EXPECT_EQ(commands().sheet(), Commands::NoSheet);
    EXPECT_TRUE(seenTable()->hasActiveFocus());
}

TEST_F(WindowMenu, noTwoItemsHaveTheSameLetter) {
    open();
    press(Qt::Key_F10);
    for (int i = 0; i < menu().rowCount(); ++i) {
        const QString label = menu().data(menu().index(i), Menu::LabelRole).toString();
        const int access = menu().data(menu().index(i), Menu::AccessRole).toInt();
        ASSERT_GE(access, 0) << label.toStdString();
        EXPECT_EQ(menu().itemOfLetter(label.mid(access, 1)), i) << label.toStdString();
    }
}

TEST_F(WindowMenu, isToldToThoseWhoCannotSeeItAndChosenFromThere) {
    open();
    press(Qt::Key_F10);
    QAccessibleInterface* const popup = told("Menu");
    ASSERT_NE(popup, nullptr);
    EXPECT_EQ(popup->role(), QAccessible::PopupMenu);
    QAccessibleInterface* const about = told("About Trivel 3");
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(about->role(), QAccessible::MenuItem);
    EXPECT_TRUE(told("Undo")->state().disabled);
    EXPECT_EQ(told("Find…")->text(QAccessible::Description), "Ctrl+F");
    EXPECT_TRUE(told("Find…")->state().focused);
    EXPECT_EQ(told("Hot Corners"), nullptr) << "what lies beneath is not told";
    about->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_EQ(commands().sheet(), Commands::AboutSheet);
    EXPECT_NE(told("Version " TEST_VERSION), nullptr);
}

TEST_F(WindowMenu, sheetOfKeysHasThoseOfTheDocument) {
    open();
    press(Qt::Key_F1);
    EXPECT_EQ(commands().sheet(), Commands::KeysSheet);
    ASSERT_NE(told("Keyboard Shortcuts"), nullptr);
    const std::string document = kit::readText(TEST_DOCUMENT);
    for (int i = 0; i < commands().rowCount(); ++i) {
        const QString keys = commands().data(commands().index(i), Commands::KeysRole).toString();
        const QString meaning = commands().data(commands().index(i), Commands::MeaningRole).toString();
        if (meaning.isEmpty()) continue;
        EXPECT_NE(told(keys + ": " + meaning), nullptr) << keys.toStdString();
        for (const QString& key : keys.split(", "))
            EXPECT_NE(document.find(key.toStdString()), std::string::npos) << key.toStdString();
    }
    click(shown("Close"));
    EXPECT_EQ(commands().sheet(), Commands::NoSheet);
    press(Qt::Key_Question, Qt::ControlModifier);
    EXPECT_EQ(commands().sheet(), Commands::KeysSheet);
}

TEST_F(WindowMenu, fitsTheSmallestWindow) {
    open();
    view().resize(260, 200);
    ASSERT_TRUE(waitFor([this] { return view().rootObject()->width() == 260; }));
    press(Qt::Key_F10);
    press(Qt::Key_End);
    QQuickItem* const last = view().activeFocusItem();
    ASSERT_EQ(last->property("label"), "About Trivel 3");
    const QRectF place = last->mapRectToScene(QRectF(0, 0, last->width(), last->height()));
    EXPECT_TRUE(QRectF(0, 0, 260, 200).contains(place)) << "the keyboard scrolls it";
}

TEST_F(WindowMenu, leavesComposersTheirKeys) {
    open();
    click(shown("Share"));
    ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
    settle();
    press(Qt::Key_F10);
    press(Qt::Key_F1);
    EXPECT_FALSE(menu().isOpen());
    EXPECT_EQ(commands().sheet(), Commands::NoSheet);
}

TEST_F(WindowMenu, reloadLoadsTheRowsAgain) {
    open();
    writeSettings("<key>HotCorners</key><false/>");
    press(Qt::Key_F5);
    EXPECT_FALSE(row("Hot Corners")->property("isOn").toBool());
}

TEST_F(WindowMenu, keysAndWheelSizeTextsWithinBounds) {
    open();
    press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(textScale(), 1.1);
    press(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(textScale(), 1.25);
    press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(textScale(), 1.1);
    press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(textScale(), 1);
    for (int i = 0; i < 20; ++i)
        press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(textScale(), 0.5);
    press(Qt::Key_0, Qt::ControlModifier);
    QWheelEvent wheel({100, 300}, view().mapToGlobal(QPointF(100, 300)), {}, {0, -120}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&view(), &wheel);
    settle();
    EXPECT_DOUBLE_EQ(textScale(), 0.9);
    EXPECT_TRUE(seenTable()->property("atYBeginning").toBool()) << "it scrolls nothing";
}

TEST_F(WindowMenu, sizeOfTextsIsOverTheDesktops) {
    open();
    session->window().setTextScale(2);
    session->window().setZoom(1.25);
    EXPECT_DOUBLE_EQ(textScale(), 2.5);
    session->window().setTextScale(1);
    EXPECT_DOUBLE_EQ(textScale(), 1.25);
    session->window().setTextScale(3);
    EXPECT_DOUBLE_EQ(textScale(), 3);
    press(Qt::Key_Plus, Qt::ControlModifier);
    press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(session->window().zoom(), 1.1) << "what could not be seen was not counted";
}

}  // namespace desktop_tests
