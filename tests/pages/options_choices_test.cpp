// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pages/features/options_page.h"
#include "pane.h"

namespace pages_test {
namespace {

using kit::withAnimation;
using testing::ElementsAre;
using testing::IsEmpty;
namespace event = kit::event;

constexpr auto condition = "MinimalControlCenterCondition";

/// The options page out of reach, where all conditions can be chosen, with one of them set.
class OptionsConditions : public testing::Test {
protected:
    void openWith(std::optional<int> stored) {
        platform::Dictionary settings{{"ReachabilityMode", false}, {"QuickSwitcher", false}};
        if (stored) settings.set(condition, *stored);
        pane.setFile(settings);
        pane.openQuietly(optionsPage);
    }

    Pane pane;
};

TEST_F(OptionsConditions, startWithMediaAlone) {
    openWith(std::nullopt);
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("If no Media is Playing"));
    EXPECT_EQ(pane.stored(condition), std::nullopt);
}

TEST_F(OptionsConditions, addUpAndTakeAway) {
    openWith(1);
    pane.screen.tap("If AirPlay is undetected");
    EXPECT_EQ(pane.stored(condition), platform::Value(3));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("If no Media is Playing", "If AirPlay is undetected"));
    pane.screen.tap("If no Media is Playing");
    EXPECT_EQ(pane.stored(condition), platform::Value(2));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("If AirPlay is undetected"));
}

TEST_F(OptionsConditions, areAllClearedByAlways) {
    openWith(5);
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("If no Media is Playing", "If AirDrop is Off"));
    pane.screen.tap("Always");
    EXPECT_EQ(pane.stored(condition), platform::Value(0));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Always"));
    pane.log.take();
    pane.screen.tap("Always");
    EXPECT_THAT(pane.log.take(), IsEmpty());
}

TEST_F(OptionsConditions, leaveAlwaysCheckedWhenTheLastOneGoes) {
    openWith(4);
    pane.screen.tap("If AirDrop is Off");
    EXPECT_EQ(pane.stored(condition), platform::Value(0));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Always"));
}

TEST_F(OptionsConditions, redrawTheirWholeSectionAndNothingElse) {
    openWith(1);
    pane.screen.tap("If AirDrop is Off");
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged(), event::reload("", 2, withAnimation),
                                             event::reload("Minimal Display", 3, withAnimation),
                                             event::reload("Always", 4, withAnimation),
                                             event::reload("If no Media is Playing", 5, withAnimation),
                                             event::reload("If AirPlay is undetected", 6, withAnimation),
                                             event::reload("If AirDrop is Off", 7, withAnimation)));
}

TEST_F(OptionsConditions, checkNothingForBitsThatNoRowHas) {
    openWith(8);
    EXPECT_THAT(pane.screen.checkedLabels(), IsEmpty());
    pane.screen.tap("If no Media is Playing");
    EXPECT_EQ(pane.stored(condition), platform::Value(9));
}

TEST(OptionsConditionsWithinReach, areRepairedNotByTheTapButByTheNextUpdate) {
    Pane pane;
    pane.openQuietly(optionsPage);
    pane.setInFile(condition, 6);
    pane.screen.tap("If no Media is Playing");
    EXPECT_EQ(pane.stored(condition), platform::Value(7));
    pane.screen.pageAs<trivel3::KavixPreferencesOptionsController>().updateSpecifiers(true);
    EXPECT_EQ(pane.stored(condition), platform::Value(1));
}

TEST(OptionsConditionsWithinReach, cannotBeTappedWhereTheyAreGreyed) {
    Pane pane;
    pane.openQuietly(optionsPage);
    pane.screen.tap("If AirDrop is Off");
    EXPECT_THAT(pane.log.take(), IsEmpty());
    EXPECT_EQ(pane.stored(condition), platform::Value(1));
}

TEST(OptionsChoices, treatARowWithoutAValueAsAlways) {
    Pane pane;
    pane.setFile({{"ReachabilityMode", false}, {condition, 5}});
    pane.openQuietly(optionsPage);
    pane.screen.row("If AirDrop is Off")->setUserInfo(platform::Dictionary{{"identifier", condition}});
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("If no Media is Playing"));
    pane.screen.tap("If AirDrop is Off");
    EXPECT_EQ(pane.stored(condition), platform::Value(0));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Always", "If AirDrop is Off"));
}

TEST(OptionsChoices, leaveEveryOtherCellAsTheFrameworkMadeIt) {
    Pane pane;
    pane.openQuietly(optionsPage);
    for (const char* label : {"Reachable Display", "Minimal Display", "Open to Last App", "Album Artwork", "Ostrel"}) {
        auto cell = pane.screen.cell(label);
        EXPECT_FALSE(cell->isChecked()) << label;
        cell->setChecked(true);
        EXPECT_TRUE(pane.screen.cell(label)->isChecked()) << label;
    }
}

}  // namespace
}  // namespace pages_test
