// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pages/preferences_page_controller.h"
#include "pane.h"
#include "platform/foundation/property_list.h"

namespace application_pages_test {
namespace {

using platform::Dictionary;
using platform::Value;
using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using testing::Optional;

class CloseAllAppsPage : public testing::Test {
protected:
    platform::PSListController& open() { return pane.openQuietly(closeAllAppsPage); }
    Value file() const { return pane.content(settingsFile); }

    PaneWithApplications pane;
};

TEST_F(CloseAllAppsPage, hasThreeSwitchesAheadOfTheApplications) {
    open();
    EXPECT_THAT(pane.screen.labels(), ElementsAre("Auto-Close All Apps", "Go Home upon Close All",
                                                  "Exclude Currently Playing", "Clock", "Maps", "Tides", "Zither"));
    EXPECT_THAT(pane.screen.headers(), ElementsAre(Eq(std::nullopt), Eq(std::nullopt), Eq(std::nullopt),
                                                   Optional(std::string("Exclude From Close All")), Eq(std::nullopt)));
    EXPECT_THAT(pane.screen.footers(),
                ElementsAre(Optional(std::string("Remove the confirmation button and close all apps automatically upon "
                                                 "swiping up.")),
                            Optional(std::string("Dismiss Multi-Center after closing all apps.")),
                            Optional(std::string("Do not close app playing background audio.")), Eq(std::nullopt),
                            Eq(std::nullopt)));
}

TEST_F(CloseAllAppsPage, bindsItsSwitchesToTheirSettings) {
    auto& page = open();
    const std::vector<std::string> keys = {"CloseAllAppsNoConfirmation", "CloseAllAppsBackToHomeScreen",
                                           "CloseAllAppsExcludeNowPlaying"};
    for (std::size_t section = 0; section < keys.size(); ++section) {
        const auto row = page.specifierAtIndexPath({section, 0});
        EXPECT_EQ(row->cellType(), platform::PSCellType::switchCell);
        EXPECT_EQ(row->identifier(), keys[section]);
        EXPECT_EQ(row->target(), &page);
        EXPECT_EQ(page.tableView_numberOfRowsInSection(page.table(), section), 1U);
    }
}

TEST_F(CloseAllAppsPage, showsItsDefaultsWithoutAFile) {
    open();
    EXPECT_THAT(pane.screen.onLabels(), ElementsAre("Exclude Currently Playing"));
}

TEST_F(CloseAllAppsPage, showsItsSwitchesAsTheyAreStored) {
    pane.phone.put(settingsFile, Dictionary{{"CloseAllAppsNoConfirmation", true},
                                            {"CloseAllAppsBackToHomeScreen", 1},
                                            {"CloseAllAppsExcludeNowPlaying", false}});
    open();
    EXPECT_THAT(pane.screen.onLabels(), ElementsAre("Auto-Close All Apps", "Go Home upon Close All"));
}

TEST_F(CloseAllAppsPage, storesASwitchAndTellsAndNothingElse) {
    const Dictionary ticks = {{"com.example.tides", true}};
    pane.phone.put(settingsFile, Dictionary{{"CloseAllAppsExceptions", ticks}, {"MultiCenter", false}});
    open();
    ASSERT_TRUE(pane.screen.moveSwitch("Go Home upon Close All", true));
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged()));
    EXPECT_EQ(file(),
              Value(Dictionary{
                  {"CloseAllAppsBackToHomeScreen", true}, {"CloseAllAppsExceptions", ticks}, {"MultiCenter", false}}));
}

TEST_F(CloseAllAppsPage, storesTheFirstSwitchInANewFile) {
    open();
    ASSERT_TRUE(pane.screen.moveSwitch("Exclude Currently Playing", false));
    EXPECT_EQ(file(), Value(only("CloseAllAppsExcludeNowPlaying", false)));
}

TEST_F(CloseAllAppsPage, doesNothingOnATapOnASwitchsRow) {
    open();
    for (const char* label : {"Auto-Close All Apps", "Go Home upon Close All", "Exclude Currently Playing"})
        pane.screen.tap(label);
    EXPECT_THAT(pane.log.take(), IsEmpty());
    EXPECT_EQ(pane.phone.bytes(settingsFile), std::nullopt);
}

TEST_F(CloseAllAppsPage, neverTouchesTheTicksWithASwitch) {
    for (const Value& odd : {Value(7), Value("text"), Value(Dictionary{{"com.example.tides", 3}})}) {
        pane.phone.put(settingsFile, only(spared, odd));
        open();
        ASSERT_TRUE(pane.screen.moveSwitch("Auto-Close All Apps", true));
        const Value after = file();
        const Value* kept = after.dictionary()->find(spared);
        ASSERT_TRUE(kept);
        EXPECT_EQ(*kept, odd);
    }
}

TEST_F(CloseAllAppsPage, keepsEveryOtherSettingWithATick) {
    pane.phone.put(settingsFile,
                   Dictionary{{"MultiCenter", false}, {"AlbumArtworkAutoDisplay", 5}, {"Unknown", platform::Array{1}}});
    open();
    pane.screen.tap("Tides");
    EXPECT_EQ(file(), Value(Dictionary{{"AlbumArtworkAutoDisplay", 5},
                                       {"CloseAllAppsExceptions", Dictionary{{"com.example.tides", true}}},
                                       {"MultiCenter", false},
                                       {"Unknown", platform::Array{1}}}));
}

TEST_F(CloseAllAppsPage, updatesNoRowsAfterASwitch) {
    open();
    const auto shown = pane.screen.page().specifiers();
    pane.screen.moveSwitch("Auto-Close All Apps", true);
    EXPECT_EQ(pane.screen.page().specifiers(), shown);
}

TEST_F(CloseAllAppsPage, keepsItsRowsAsTheFrameworksOwn) {
    auto& page = open();
    EXPECT_EQ(page.specifiers().size(), 5U + 3U + 4U);
    EXPECT_EQ(&page.specifiers(), &page.specifiers());
}

/// A value where the dictionary of ticks should be. Binary, since XML cannot say all of them.
class MalformedTicks : public testing::TestWithParam<Value> {
protected:
    MalformedTicks() {
        const Dictionary settings = {{"CloseAllAppsExceptions", GetParam()}, {"MultiCenter", false}};
        pane.phone.put(settingsFile, std::string_view(*platform::writeBinaryPropertyList(settings).bytes));
        pane.openQuietly(closeAllAppsPage);
    }

    Value file() const { return pane.content(settingsFile); }

    PaneWithApplications pane;
};

INSTANTIATE_TEST_SUITE_P(OfEveryKind, MalformedTicks,
                         testing::Values(Value(7), Value(0), Value(true), Value(false), Value(1.5), Value("text"),
                                         Value(platform::Array{"com.example.tides"}), Value(platform::Date{1}),
                                         Value(platform::Data{}), Value(platform::Null())));

TEST_P(MalformedTicks, showEveryApplicationUntickedAndGoAtTheFirst) {
    EXPECT_FALSE(pane.screen.isChecked("Maps"));
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged()));
    EXPECT_EQ(file(), Value(only("MultiCenter", false)));
    EXPECT_THAT(pane.screen.checkedLabels(), IsEmpty());
    EXPECT_THAT(pane.log.take(), IsEmpty()) << "there is nothing to repair any more";
}

TEST_P(MalformedTicks, stayWhileOnlySwitchesAreShown) {
    EXPECT_FALSE(pane.screen.isOn("Auto-Close All Apps"));
    EXPECT_TRUE(pane.screen.isOn("Exclude Currently Playing"));
    EXPECT_THAT(pane.log.take(), IsEmpty());
}

TEST_P(MalformedTicks, goBeforeATickIsStored) {
    pane.screen.tap("Tides");
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), settingsWritten(), settingsChanged()));
    EXPECT_EQ(file(), Value(Dictionary{{"CloseAllAppsExceptions", Dictionary{{"com.example.tides", true}}},
                                       {"MultiCenter", false}}));
}

TEST_P(MalformedTicks, areRepairedAtEachCellWhileTheFileCannotBeWritten) {
    pane.phone.setWritesFail(true);
    for (int time = 0; time < 2; ++time) {
        EXPECT_FALSE(pane.screen.isChecked("Maps"));
        EXPECT_THAT(pane.log.take(), ElementsAre(settingsNotWritten(), settingsChanged()));
    }
    pane.screen.tap("Maps");
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsNotWritten(), settingsChanged(), settingsNotWritten(), settingsChanged()));
}

TEST_F(CloseAllAppsPage, repairsNothingInAMalformedFile) {
    pane.phone.put(settingsFile, "garbage");
    open();
    EXPECT_THAT(pane.screen.checkedLabels(), IsEmpty());
    EXPECT_THAT(pane.log.take(), IsEmpty());
}

TEST_F(CloseAllAppsPage, repairsNothingWhenThereIsNoApplicationToShow) {
    Pane bare;
    bare.phone.put(settingsFile, only(spared, 7));
    bare.openQuietly(closeAllAppsPage);
    EXPECT_THAT(bare.screen.checkedLabels(), IsEmpty());
    EXPECT_THAT(bare.log.take(), IsEmpty());
}

TEST_F(CloseAllAppsPage, answersToATapOutsideItsRowsWithNothing) {
    auto& page = open();
    page.tableView_didSelectRowAtIndexPath(page.table(), {3, 99});
    page.tableView_didSelectRowAtIndexPath(page.table(), {99, 0});
    EXPECT_THAT(pane.log.take(), IsEmpty());
}

}  // namespace
}  // namespace application_pages_test
