// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pane.h"

namespace pages_test {
namespace {

using kit::withAnimation;
using testing::ElementsAre;
using testing::IsEmpty;
namespace event = kit::event;

constexpr auto brightness = "SliderActionsBrightness";
constexpr auto volume = "SliderActionsVolume";
constexpr auto disableHud = "SliderActionsDisableHUD";

TEST(SliderActionsPage, hasTheRowsOfItsTable) {
    Pane pane;
    expectRows(pane, kit::sliderActionsTable());
}

TEST(SliderActionsPage, showsTheDefaultsWithoutAFile) {
    Pane pane;
    pane.screen.open(sliderActionsPage);
    EXPECT_THAT(pane.log.take(), ElementsAre(event::push("KavixPreferencesSliderActionsController")));
    EXPECT_THAT(pane.screen.checkedLabels(0), ElementsAre("Toggle Auto-Brightness"));
    EXPECT_THAT(pane.screen.checkedLabels(1), ElementsAre("Switch to Ringer Volume"));
    EXPECT_FALSE(pane.screen.isOn("Disable Slider HUD"));
}

TEST(SliderActionsPage, redrawsTheTappedGroupAlone) {
    Pane pane;
    pane.openQuietly(sliderActionsPage);
    pane.screen.tap("Set Brightness to Minimum");
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged(),
                                             event::reload("Tap Brightness Icon to:", 0, withAnimation),
                                             event::reload("Toggle Auto-Brightness", 1, withAnimation),
                                             event::reload("Set Brightness to Minimum", 2, withAnimation),
                                             event::reload("Set Brightness to Maximum", 3, withAnimation)));
    EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{brightness, 0}}));
    EXPECT_THAT(pane.screen.checkedLabels(0), ElementsAre("Set Brightness to Minimum"));
}

TEST(SliderActionsPage, storesEachActionByItsOwnNumber) {
    const std::tuple<const char*, const char*, int> actions[] = {
        {"Set Brightness to Minimum", brightness, 0}, {"Set Brightness to Maximum", brightness, 1},
        {"Toggle Auto-Brightness", brightness, 2},    {"Set Volume to Minimum", volume, 0},
        {"Set Volume to Maximum", volume, 1},         {"Switch to Ringer Volume", volume, 2},
    };
    Pane pane;
    pane.openQuietly(sliderActionsPage);
    for (const auto& [label, key, value] : actions) {
        pane.screen.tap(label);
        EXPECT_EQ(pane.stored(key), platform::Value(value)) << label;
    }
}

TEST(SliderActionsPage, writesItsSwitchAndNothingFollows) {
    Pane pane;
    pane.openQuietly(sliderActionsPage);
    const auto labels = pane.screen.labels();
    EXPECT_TRUE(pane.screen.moveSwitch("Disable Slider HUD", true));
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged()));
    EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{disableHud, true}}));
    EXPECT_TRUE(pane.screen.isOn("Disable Slider HUD"));
    EXPECT_EQ(pane.screen.labels(), labels);
}

TEST(SliderActionsPage, checksTheSwitchsCellEachTimeWhateverItsState) {
    for (const bool on : {false, true}) {
        Pane pane;
        pane.setFile({{disableHud, on}});
        pane.openQuietly(sliderActionsPage);
        auto cell = pane.screen.cell("Disable Slider HUD");
        EXPECT_TRUE(cell->isChecked());
        cell->setChecked(false);
        EXPECT_TRUE(pane.screen.cell("Disable Slider HUD")->isChecked());
        EXPECT_EQ(cell->isOn(), on);
    }
}

TEST(SliderActionsPage, takesATapOnTheSwitchsRowForNoChange) {
    Pane pane;
    pane.openQuietly(sliderActionsPage);
    pane.screen.tap("Disable Slider HUD");
    EXPECT_THAT(pane.log.take(), IsEmpty());
    EXPECT_FALSE(pane.screen.isOn("Disable Slider HUD"));
}

}  // namespace
}  // namespace pages_test
