// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QTest>
#include <algorithm>
#include <filesystem>

#include "tests/desktop/desk.h"

namespace desktop_tests {

/// A window that is wide enough for the first page beside the one that is open.
class TwoColumns : public Desk {
protected:
    static constexpr QSize wide{1200, 800};
    static constexpr QSize narrow{600, 800};

    void openWide() {
        open();
        resize(wide);
    }
    void resize(QSize size) {
        view().resize(size);
        ASSERT_TRUE(waitFor([&] { return view().rootObject()->size() == QSizeF(size); }));
        settle();
    }

    QQuickItem* left() { return tableOf(navigation().first()); }
    hosts::desktop::TableModel& leftRows() { return *navigation().first()->table(); }
    int leftLine(const QString& label) {
        auto& model = leftRows();
        for (int i = model.rowBeside(-1, 1); i >= 0; i = model.rowBeside(i, 1)) {
            if (model.data(model.index(i), hosts::desktop::TableModel::TextRole).toString() == label) return i;
        }
        return -1;
    }
    QQuickItem* leftRow(const QString& label) {
        QQuickItem* item = nullptr;
        QMetaObject::invokeMethod(left(), "itemAtIndex", Q_RETURN_ARG(QQuickItem*, item), Q_ARG(int, leftLine(label)));
        return item;
    }
    void choose(const QString& label) { click(leftRow(label)); }

    QStringList marked() {
        QStringList labels;
        auto& model = leftRows();
        for (int i = 0; i < model.rowCount(); ++i) {
            if (model.data(model.index(i), hosts::desktop::TableModel::OpenRole).toBool())
                labels.append(model.data(model.index(i), hosts::desktop::TableModel::TextRole).toString());
        }
        return labels;
    }
    bool isUsable(const QString& label) {
        return table().data(table().index(lineOf(label)), hosts::desktop::TableModel::UsableRole).toBool();
    }
    bool isOn(hosts::desktop::TableModel& model, int line) {
        return model.data(model.index(line), hosts::desktop::TableModel::OnRole).toBool();
    }
    QString focusedRow(QQuickItem* within) {
        if (!within || !within->hasActiveFocus()) return {};
        auto* current = within->property("currentItem").value<QQuickItem*>();
        return current ? current->property("text").toString() : QString();
    }
    void type(const char* text) {
        for (const char* each = text; *each; ++each)
            QTest::keyClick(&view(), *each);
        settle();
    }
    double leftEdge(QQuickItem* item) { return item->mapToScene({0, 0}).x(); }

    // Everything that is told to those who cannot see the window.
    static QList<QAccessibleInterface*> toldIn(QAccessibleInterface* within) {
        QList<QAccessibleInterface*> all{within};
        for (int i = 0; i < within->childCount(); ++i)
            all += toldIn(within->child(i));
        return all;
    }
    QList<QAccessibleInterface*> told() { return toldIn(QAccessible::queryAccessibleInterface(&view())); }
    QStringList toldLists() {
        QStringList names;
        for (QAccessibleInterface* each : told()) {
            if (each->role() == QAccessible::List) names.append(each->text(QAccessible::Name));
        }
        return names;
    }
    QStringList toldSelected() {
        QStringList names;
        for (QAccessibleInterface* each : told()) {
            if (each->state().selected) names.append(each->text(QAccessible::Name));
        }
        return names;
    }
    bool isTold(const QString& name) {
        return std::ranges::any_of(told(), [&](auto* each) { return each->text(QAccessible::Name) == name; });
    }
};

TEST_F(TwoColumns, stayInViewTogetherFromNineHundredPointsOn) {
    openWide();
    openPage({"Advanced Options"});
    ASSERT_NE(left(), nullptr);
    EXPECT_EQ(leftEdge(left()), 0);
    EXPECT_EQ(leftEdge(seenTable()), left()->width());
    EXPECT_EQ(left()->width() + seenTable()->width(), view().width());
    resize({900, 800});
    EXPECT_NE(left(), nullptr);
    resize({899, 800});
    EXPECT_EQ(left(), nullptr);
    EXPECT_EQ(seenTable()->width(), 899);
}

TEST_F(TwoColumns, openNothingThatTheUserHasNotChosen) {
    openWide();
    EXPECT_EQ(navigation().path(), QStringList());
    EXPECT_EQ(settings(), "");
    EXPECT_TRUE(isTold("Choose a page on the left, and it opens here."));
    choose("The Creators");
    EXPECT_FALSE(isTold("Choose a page on the left, and it opens here."));
}

TEST_F(TwoColumns, showThePageThatIsChosenOnTheRightAndMarkItsRow) {
    openWide();
    choose("Advanced Options");
    EXPECT_EQ(navigation().path(), QStringList("Advanced Options"));
    EXPECT_EQ(marked(), QStringList("Advanced Options"));
    openPage({"Slider Actions"});
    EXPECT_EQ(marked(), QStringList("Advanced Options")) << "the way to it begins there";
    EXPECT_GT(leftEdge(seenTable()), 0);
    resize(narrow);
    EXPECT_EQ(marked(), QStringList());
}

TEST_F(TwoColumns, goBackToTheFirstPageForAnotherOne) {
    openWide();
    choose("Advanced Options");
    openPage({"Slider Actions"});
    choose("The Creators");
    EXPECT_EQ(navigation().path(), QStringList("The Creators"));
    EXPECT_EQ(marked(), QStringList("The Creators"));
    EXPECT_TRUE(waitFor([this] { return navigation().rowCount() == 2; })) << "nothing is left of the others";
    ASSERT_TRUE(navigation().back());
    EXPECT_EQ(navigation().path(), QStringList());
    settle();
    EXPECT_EQ(marked(), QStringList());
}

TEST_F(TwoColumns, goBackToThePageWhoseRowIsTouchedAgain) {
    openWide();
    choose("Advanced Options");
    const auto* page = navigation().current();
    openPage({"Slider Actions"});
    choose("Advanced Options");
    EXPECT_EQ(navigation().current(), page) << "it has not been opened anew";
    const std::string before = settings();
    choose("Advanced Options");
    EXPECT_EQ(navigation().current(), page);
    EXPECT_EQ(settings(), before);
}

TEST_F(TwoColumns, leaveThePageOpenWhileAnEmailIsLookedOver) {
    openWide();
    choose("The Creators");
    choose("Fenwary Support");
    ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
    navigation().composer()->cancel();
    settle();
    EXPECT_EQ(navigation().path(), QStringList("The Creators"));
}

TEST_F(TwoColumns, showAtOnceOnTheRightWhatASwitchOnTheLeftChanges) {
    openWide();
    choose("Advanced Options");
    ASSERT_TRUE(isUsable("Reachable Display"));
    QQuickItem* line = leftRow("Multi-Center");
    click(line, {line->width() - 40, line->height() / 2});
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
    EXPECT_TRUE(waitFor([this] { return !isUsable("Reachable Display"); }));
    EXPECT_EQ(navigation().path(), QStringList("Advanced Options"));
}

TEST_F(TwoColumns, writeNothingForThePageThatLooksOn) {
    writeSettings("<key>MultiCenter</key><false/>");
    openWide();
    choose("Advanced Options");
    settle();
    const std::string before = settings();
    const int line = leftLine("Hot Corners");
    leftRows().moveSwitch(line, false);
    settle();
    ASSERT_TRUE(settingIs("HotCorners", "<false/>"));
    leftRows().moveSwitch(line, true);
    settle();
    EXPECT_TRUE(settingIs("HotCorners", "<true/>"));
    std::string expected = before;
    std::string now = settings();
    std::erase_if(now, [](char each) { return each == '\n' || each == '\t' || each == ' '; });
    std::erase_if(expected, [](char each) { return each == '\n' || each == '\t' || each == ' '; });
    const std::string added = "<key>HotCorners</key><true/>";
    ASSERT_NE(now.find(added), std::string::npos) << now;
    now.erase(now.find(added), added.size());
    EXPECT_EQ(now, expected);
}

TEST_F(TwoColumns, followWhatOtherProgramsChange) {
    openWide();
    choose("Advanced Options");
    session->watchFiles();
    settle();
    writeSettings("<key>MultiCenter</key><false/><key>QuickSwitcher</key><false/>");
    EXPECT_TRUE(waitFor([this] { return !isOn(leftRows(), leftLine("Quick Switcher")); }));
    EXPECT_TRUE(waitFor([this] { return !isUsable("Reachable Display"); }));
}

TEST_F(TwoColumns, tellOfASwitchOnTheLeftThatCouldNotBeSavedAndTryItAgain) {
    openWide();
    choose("The Creators");
    const std::filesystem::path file = phoneFolder + "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
    std::filesystem::remove(file);
    std::filesystem::create_directories(file / "folder");
    leftRows().moveSwitch(leftLine("Quick Switcher"), false);
    ASSERT_TRUE(waitFor([this] { return bannerText().contains("Not saved"); })) << bannerText().toStdString();
    EXPECT_TRUE(waitFor([this] { return isOn(leftRows(), leftLine("Quick Switcher")); })) << "as the file has it";
    std::filesystem::remove_all(file);
    click(named(view().rootObject(), "Try again"));
    EXPECT_TRUE(waitFor([this] { return settingIs("QuickSwitcher", "<false/>"); }));
}

TEST_F(TwoColumns, areGoneThroughFromLeftToRightByTheKeys) {
    openWide();
    session->window().showFocus();
    choose("Advanced Options");
    session->window().showFocus();
    EXPECT_EQ(focusedRow(seenTable()), "Reachable Display") << "the page that was opened has the keys";
    press(Qt::Key_Left);
    EXPECT_EQ(focusedRow(left()), "Advanced Options");
    press(Qt::Key_Up);
    EXPECT_EQ(focusedRow(left()), "Hot Corners");
    press(Qt::Key_Right);
    EXPECT_EQ(focusedRow(seenTable()), "Reachable Display");
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(view().activeFocusItem()->property("name").toString(), "Share");
    for (int i = 0; i < 3 && !left()->hasActiveFocus(); ++i)
        press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focusedRow(left()), "Hot Corners");
    for (int i = 0; i < 4 && !seenTable()->hasActiveFocus(); ++i)
        press(Qt::Key_Tab);
    EXPECT_EQ(focusedRow(seenTable()), "Reachable Display");
}

TEST_F(TwoColumns, goBackByTheKeysToTheRowThatWasChosen) {
    openWide();
    press(Qt::Key_Down);
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_EQ(title(), "Advanced Options");
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(title(), "Trivel 3");
    EXPECT_EQ(focusedRow(left()), "Advanced Options");
    press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(left()), "The Creators");
}

TEST_F(TwoColumns, haveAWayBackOnTheRightOnlyWhereItsPageIsOutOfView) {
    openWide();
    choose("Advanced Options");
    EXPECT_EQ(named(view().rootObject(), "Back to Trivel 3"), nullptr);
    openPage({"Slider Actions"});
    click(named(view().rootObject(), "Back to Advanced Options"));
    EXPECT_EQ(title(), "Advanced Options");
    resize(narrow);
    click(named(view().rootObject(), "Back to Trivel 3"));
    EXPECT_EQ(title(), "Trivel 3");
}

TEST_F(TwoColumns, keepWhatIsReadInViewAsTheyComeAndGo) {
    openWide();
    choose("Advanced Options");
    for (const QSize size : {narrow, wide, QSize(320, 480), QSize(260, 480), wide}) {
        QMetaObject::invokeMethod(seenTable(), "positionViewAtIndex", Q_ARG(int, lineOf("Close All Apps")),
                                  Q_ARG(int, 0));  // ListView.Beginning
        settle();
        resize(size);
        const double top = row("Close All Apps")->mapToItem(seenTable(), {0, 0}).y();
        EXPECT_NEAR(top, 0, 1) << size.width();
    }
}

TEST_F(TwoColumns, keepThePlaceAsTheyComeAndGo) {
    openWide();
    choose("Advanced Options");
    session->window().showFocus();
    for (int i = 0; i < 12; ++i)
        press(Qt::Key_Down);
    const QString there = focusedRow(seenTable());
    ASSERT_FALSE(there.isEmpty());
    for (const QSize size : {narrow, wide, QSize(320, 480), wide}) {
        resize(size);
        EXPECT_EQ(navigation().path(), QStringList("Advanced Options"));
        EXPECT_EQ(focusedRow(seenTable()), there);
        QQuickItem* line = seenTable()->property("currentItem").value<QQuickItem*>();
        const double top = line->mapToItem(seenTable(), {0, 0}).y();
        EXPECT_GE(top, -0.5) << size.width();
        EXPECT_LE(top + line->height(), seenTable()->height() + 0.5) << size.width();
    }
}

TEST_F(TwoColumns, giveTheKeysToThePageThatIsOpenAsTheFirstOneGoesOutOfView) {
    openWide();
    choose("Advanced Options");
    session->window().showFocus();
    press(Qt::Key_Left);
    ASSERT_EQ(focusedRow(left()), "Advanced Options");
    resize(narrow);
    EXPECT_EQ(focusedRow(seenTable()), "Reachable Display");
    press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(seenTable()), "Minimal Display");
}

TEST_F(TwoColumns, areBothToldToThoseWhoCannotSeeThem) {
    openWide();
    choose("Advanced Options");
    EXPECT_EQ(toldLists(), (QStringList{"Trivel 3", "Advanced Options"}));
    EXPECT_EQ(toldSelected(), QStringList("Advanced Options"));
    resize(narrow);
    EXPECT_EQ(toldLists(), QStringList("Advanced Options"));
    EXPECT_EQ(toldSelected(), QStringList());
}

TEST_F(TwoColumns, showWhatIsFoundWhereItIs) {
    openWide();
    choose("The Creators");
    type("invert");
    press(Qt::Key_Return);
    EXPECT_EQ(navigation().path(), QStringList("Advanced Options"));
    EXPECT_EQ(focusedRow(seenTable()), "Invert Hot Corners");
    EXPECT_EQ(marked(), QStringList("Advanced Options"));
    type("quickswitcher");
    press(Qt::Key_Return);
    EXPECT_EQ(navigation().path(), QStringList());
    EXPECT_EQ(focusedRow(left()), "Quick Switcher");
}

TEST_F(TwoColumns, showThePageThatIsNamedFromOutside) {
    openWide();
    ASSERT_TRUE(navigation().openPath("Advanced Options/Slider Actions"));
    settle();
    EXPECT_EQ(navigation().path(), QStringList({"Advanced Options", "Slider Actions"}));
    EXPECT_EQ(marked(), QStringList("Advanced Options"));
    EXPECT_GT(leftEdge(seenTable()), 0);
}

TEST_F(TwoColumns, slideNothingOverTheFirstPage) {
    open(false);
    resize(wide);
    leftRows().tap(leftLine("Advanced Options"));
    ASSERT_TRUE(waitFor([this] { return title() == "Advanced Options" && seenTable(); }));
    ASSERT_TRUE(waitFor([this] { return leftEdge(seenTable()) == left()->width(); }));
    settle();
    table().tap(lineOf("Slider Actions"));
    const auto leftHalf = [this] {
        return view().grabWindow().copy(0, 60, static_cast<int>(left()->width()) - 2, 700);
    };
    const QImage before = leftHalf();
    ASSERT_TRUE(waitFor([this] { return seenTable() && title() == "Slider Actions"; }));
    bool isSame = true;
    ASSERT_TRUE(waitFor([&] {
        isSame = isSame && leftHalf() == before;
        return leftEdge(seenTable()) == left()->width();
    }));
    EXPECT_TRUE(isSame);
}

TEST_F(TwoColumns, waitForMoreRoomWhereTextsAreLarge) {
    openWide();
    session->window().setTextScale(1.5);
    settle();
    EXPECT_FALSE(navigation().isSideBySide());
    resize({1400, 800});
    EXPECT_TRUE(navigation().isSideBySide());
}

TEST_F(TwoColumns, haveOneMenuBesideThePageThatTakesTheKeys) {
    openWide();
    const auto menus = [this] {
        std::vector<double> edges;
        std::vector<QQuickItem*> items{view().rootObject()};
        while (!items.empty()) {
            QQuickItem* const item = items.back();
            items.pop_back();
            const bool isButton = item->property("name").toString() == "Menu" && item->isVisible();
            if (isButton) edges.push_back(leftEdge(item));
            const auto within = item->childItems();
            items.insert(items.end(), within.begin(), within.end());
        }
        return edges;
    };
    ASSERT_EQ(menus().size(), 1U);
    EXPECT_LT(menus().front(), 360);
    choose("Advanced Options");
    ASSERT_EQ(menus().size(), 1U);
    EXPECT_GT(menus().front(), 1000);
}

}  // namespace desktop_tests
