// SPDX-License-Identifier: MIT
#include <QTest>

#include "tests/desktop/desk.h"

namespace desktop_tests {

using Switch = Desk;

TEST_F(Switch, clickedMovesAndWritesTheFile) {
    open();
    ASSERT_TRUE(row("Multi-Center")->property("isOn").toBool());
    clickSwitch("Multi-Center");
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>")) << settings();
    EXPECT_FALSE(row("Multi-Center")->property("isOn").toBool());
    clickSwitch("Multi-Center");
    EXPECT_TRUE(settingIs("MultiCenter", "<true/>")) << settings();
    EXPECT_TRUE(row("Multi-Center")->property("isOn").toBool());
}

TEST_F(Switch, isMovedByAClickAnywhereOnItsRow) {
    open();
    click(row("Multi-Center"), QPointF(80, 22));
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>")) << settings();
    EXPECT_FALSE(row("Multi-Center")->property("isOn").toBool());
    click(row("Multi-Center"), QPointF(80, 22));
    EXPECT_TRUE(settingIs("MultiCenter", "<true/>")) << settings();
}

TEST_F(Switch, staysWhereADragOrAScrollBeginsOnItsRow) {
    open();
    QQuickItem* line = row("Multi-Center");
    drag(line, {60, 22}, {160, 22});
    EXPECT_EQ(settings(), "");
    drag(line, {60, 22}, {160, 22});
    drag(line, {80, 30}, {80, 16});
    EXPECT_EQ(settings(), "") << "sideways, or too short a way for the page to move";
    drag(line, {80, 22}, {80, -120});
    EXPECT_EQ(settings(), "");
    EXPECT_TRUE(row("Multi-Center")->property("isOn").toBool());
}

TEST_F(Switch, followsADragAndGoesNoFurther) {
    open();
    QQuickItem* line = row("Multi-Center");
    const QPointF knobOn(line->width() - 30, 22);
    const QPointF knobOff(line->width() - 50, 22);
    drag(line, knobOn, knobOn + QPointF(25, 0));
    EXPECT_EQ(settings(), "") << "it is on already";
    drag(line, knobOn, knobOff);
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>")) << settings();
    drag(line, knobOff, knobOff - QPointF(20, 0));
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>")) << settings();
    drag(line, knobOff, knobOn);
    EXPECT_TRUE(settingIs("MultiCenter", "<true/>")) << settings();
}

TEST_F(Switch, thatIsLetGoBeyondItsEndsHasMoved) {
    open();
    QQuickItem* line = row("Multi-Center");
    const QPointF knob(line->width() - 30, 22);
    drag(line, knob, knob - QPointF(200, -30));
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>")) << settings();
    EXPECT_FALSE(row("Multi-Center")->property("isOn").toBool());
}

TEST_F(Switch, draggedToAndFroStays) {
    open();
    QQuickItem* line = row("Multi-Center");
    const QPointF knob(line->width() - 30, 22);
    QTest::mousePress(&view(), Qt::LeftButton, {}, line->mapToScene(knob).toPoint());
    QTest::mouseMove(&view(), line->mapToScene(knob - QPointF(25, 0)).toPoint());
    QTest::mouseMove(&view(), line->mapToScene(knob).toPoint());
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, line->mapToScene(knob).toPoint());
    settle();
    EXPECT_EQ(settings(), "");
    EXPECT_TRUE(row("Multi-Center")->property("isOn").toBool());
}

TEST_F(Switch, greyedStaysAsItIs) {
    open();
    openPage({"Advanced Options"});
    const int line = lineOf("Access App Switcher");
    ASSERT_GE(line, 0);
    ASSERT_FALSE(table().data(table().index(line), hosts::desktop::TableModel::UsableRole).toBool());
    const std::string before = settings();
    table().moveSwitch(line, true);
    EXPECT_EQ(settings(), before);
    clickSwitch("Access App Switcher");
    EXPECT_EQ(settings(), before);
    EXPECT_FALSE(row("Access App Switcher")->property("isOn").toBool());
}

TEST_F(Switch, changesTheFootersThatDependOnIt) {
    open();
    const auto footer = [this] {
        for (QQuickItem* line : lines()) {
            const QString text = line->property("text").toString();
            if (text.startsWith("Pull up from the bottom left")) return text;
        }
        return QString();
    };
    ASSERT_FALSE(footer().isEmpty());
    EXPECT_FALSE(footer().contains("pull up further"));
    clickSwitch("Multi-Center");
    EXPECT_TRUE(footer().contains("pull up further"));
}

}  // namespace desktop_tests
