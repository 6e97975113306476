// SPDX-License-Identifier: MIT
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

TEST_F(Switch, rowClickedBesideItsSwitchStaysAsItIs) {
    open();
    click(row("Multi-Center"), QPointF(80, 22));
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
