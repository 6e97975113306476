// SPDX-License-Identifier: MIT
#include "platform/list/table_cell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rows.h"

namespace list_test {
namespace {

using platform::PSTableCell;
using platform::UITableViewCellAccessoryType;
using testing::ElementsAre;

std::shared_ptr<const platform::UIImage> square(std::uint32_t pixels) {
    return platform::UIImage::fromPixels("square", pixels, pixels, std::vector<std::uint8_t>(4u * pixels * pixels), 2);
}

TEST(Cell, showsTheRowsNameUnlessItHasALabel) {
    ShownRows shown({group(), item("name")});
    EXPECT_EQ(shown.screen.cell("name")->textLabel()->text(), "name");
    shown.screen.row("name")->setProperty_forKey(platform::Value("label"), "label");
    EXPECT_EQ(shown.screen.cell("name")->textLabel()->text(), "label");
}

TEST(Cell, showsTheRowsIcon) {
    ShownRows shown({item("a")});
    EXPECT_FALSE(shown.screen.cell("a")->imageView()->image);
    shown.screen.row("a")->setProperty_forKey(square(58), "iconImage");
    auto cell = shown.screen.cell("a");
    ASSERT_TRUE(cell->imageView()->image);
    EXPECT_EQ(cell->imageView()->frame(), (platform::CGRect{15, 7.5, 29, 29}));
    EXPECT_EQ(cell->textLabel()->frame(), (platform::CGRect{59, 0, 261, 44}));
}

TEST(Cell, losesTheIconThatIsSetToNone) {
    ShownRows shown({item("a")});
    auto row = shown.screen.row("a");
    row->setProperty_forKey(square(58), "iconImage");
    row->setProperty_forKey(std::shared_ptr<const platform::UIImage>(), "iconImage");
    EXPECT_EQ(row->propertyForKey("iconImage"), nullptr);
    EXPECT_FALSE(shown.screen.cell("a")->imageView()->image);
}

TEST(Cell, isGreyedByTheRowsEnabledPropertyAlone) {
    ShownRows shown({item("a")});
    EXPECT_FALSE(shown.screen.isGreyed("a"));
    for (const bool enabled : {false, true, false}) {
        shown.screen.row("a")->setProperty_forKey(platform::Value(enabled), "enabled");
        EXPECT_EQ(shown.screen.isGreyed("a"), !enabled);
    }
}

TEST(Cell, staysTheSameWhileItIsKept) {
    ShownRows shown({item("a")});
    auto kept = shown.screen.cell("a");
    kept->setChecked(true);
    EXPECT_EQ(shown.screen.cell("a"), kept);
    EXPECT_TRUE(kept->isChecked());
}

TEST(Cell, isMadeAnewOnceNobodyKeepsIt) {
    ShownRows shown({item("a")});
    shown.screen.cell("a")->setChecked(true);
    EXPECT_EQ(shown.screen.row("a")->cell(), nullptr);
    EXPECT_FALSE(shown.screen.isChecked("a"));
}

TEST(Cell, showsWhatTheRowSaysNowWhenItIsProducedAgain) {
    bool on = false;
    ShownRows shown({toggle("a", [&on](platform::PSSpecifier&) { return platform::Value(on); })});
    auto kept = shown.screen.cell("a");
    EXPECT_FALSE(kept->isOn());
    on = true;
    EXPECT_FALSE(kept->isOn());
    shown.screen.cell("a");
    EXPECT_TRUE(kept->isOn());
}

TEST(Cell, fillsTheWidthOfTheTable) {
    ShownRows shown({item("a")});
    EXPECT_EQ(shown.screen.cell("a")->frame(), (platform::CGRect{0, 0, 320, 44}));
    shown.page().table().setFrame({0, 0, 568, 320});
    EXPECT_EQ(shown.screen.cell("a")->frame(), (platform::CGRect{0, 0, 568, 44}));
}

TEST(Cell, pointsOnwardForALink) {
    ShownRows shown({link("a", "Page"), item("b")});
    EXPECT_EQ(shown.screen.cell("a")->accessoryType, UITableViewCellAccessoryType::disclosureIndicator);
    EXPECT_EQ(shown.screen.cell("b")->accessoryType, UITableViewCellAccessoryType::none);
}

TEST(Cell, putsTheCheckmarkInPlaceOfItsAccessory) {
    ShownRows shown({link("a", "Page"), item("b")});
    for (const auto& [label, resting] : {std::pair{"a", UITableViewCellAccessoryType::disclosureIndicator},
                                         {"b", UITableViewCellAccessoryType::none}}) {
        auto cell = shown.screen.cell(label);
        cell->setChecked(true);
        EXPECT_EQ(cell->accessoryType, UITableViewCellAccessoryType::checkmark);
        cell->setChecked(false);
        EXPECT_EQ(cell->accessoryType, resting);
    }
}

TEST(Cell, leavesRoomForItsAccessory) {
    ShownRows shown({link("link", "Page"), item("item"), toggle("switch")});
    auto item = shown.screen.cell("item");
    EXPECT_EQ(item->contentView()->frame().width, 320);
    EXPECT_LT(shown.screen.cell("link")->contentView()->frame().width, 320);
    EXPECT_LT(shown.screen.cell("switch")->contentView()->frame().width, 320);
    item->setChecked(true);
    item->layoutSubviews();
    EXPECT_LT(item->contentView()->frame().width, 320);
}

TEST(Switch, showsTheTruthValueOfWhatItsGetterGives) {
    const std::pair<std::optional<platform::Value>, bool> cases[] = {
        {true, true}, {false, false}, {2, true}, {0, false}, {"YES", true}, {"no", false}, {std::nullopt, false}};
    for (const auto& [value, on] : cases) {
        ShownRows shown({toggle("a", [held = value](platform::PSSpecifier&) { return held; })});
        EXPECT_EQ(shown.screen.isOn("a"), on);
    }
}

TEST(Switch, isOffWithoutAGetter) {
    ShownRows shown({toggle("a")});
    EXPECT_FALSE(shown.screen.isOn("a"));
}

TEST(Switch, handsABooleanAndItsRowToItsSetter) {
    std::vector<std::pair<platform::Value, std::string>> set;
    ShownRows shown({toggle("a", nullptr, [&set](const platform::Value& value, platform::PSSpecifier& row) {
        set.emplace_back(value, row.name());
    })});
    EXPECT_TRUE(shown.screen.moveSwitch("a", true));
    EXPECT_TRUE(shown.screen.moveSwitch("a", false));
    EXPECT_THAT(set, ElementsAre(std::pair(platform::Value(true), "a"), std::pair(platform::Value(false), "a")));
}

TEST(Switch, keepsTheStateThatTheUserGaveItUntilItIsProducedAgain) {
    ShownRows shown({toggle("a", [](platform::PSSpecifier&) { return platform::Value(false); })});
    auto cell = shown.screen.cell("a");
    EXPECT_TRUE(cell->userMovedSwitch(true));
    EXPECT_TRUE(cell->isOn());
    EXPECT_FALSE(shown.screen.isOn("a"));
}

TEST(Switch, cannotBeMovedWhileItIsGreyed) {
    int calls = 0;
    ShownRows shown(
        {greyed(toggle("a", nullptr, [&calls](const platform::Value&, platform::PSSpecifier&) { ++calls; }))});
    EXPECT_FALSE(shown.screen.moveSwitch("a", true));
    EXPECT_FALSE(shown.screen.isOn("a"));
    EXPECT_EQ(calls, 0);
}

TEST(Switch, isNothingThatAnotherRowHas) {
    ShownRows shown({item("a"), link("b", "Page")});
    EXPECT_FALSE(shown.screen.moveSwitch("a", true));
    EXPECT_FALSE(shown.screen.moveSwitch("b", true));
}

}  // namespace
}  // namespace list_test
