// SPDX-License-Identifier: MIT
#include <filesystem>

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

// A folder stands where the file should be.
TEST_F(Switch, thatCannotBeSavedGoesBackAndSaysWhy) {
    std::filesystem::create_directories(phoneFolder +
                                        "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist/folder");
    open();
    ASSERT_TRUE(row("Quick Switcher")->property("isOn").toBool());
    clickSwitch("Quick Switcher");
    EXPECT_TRUE(waitFor([this] { return !navigation().banners().text().isEmpty(); }));
    EXPECT_TRUE(navigation().banners().text().contains("Is a directory"))
        << navigation().banners().text().toStdString();
    navigation().banners().close();
    settle();
    EXPECT_TRUE(row("Quick Switcher")->property("isOn").toBool());
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
