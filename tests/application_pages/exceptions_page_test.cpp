// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "pages/preferences_page_controller.h"
#include "pane.h"

namespace application_pages_test {
namespace {

using kit::event::notification;
using platform::Dictionary;
using platform::Value;
using testing::Each;
using testing::ElementsAre;
using testing::Eq;

class ExceptionsPage : public testing::Test {
protected:
    platform::PSListController& open() { return pane.openQuietly(exceptionsPage); }

    PaneWithApplications pane;
};

TEST_F(ExceptionsPage, showsOnlyApplicationsInTwoUntitledGroups) {
    auto& page = open();
    EXPECT_THAT(pane.screen.labels(), ElementsAre("Clock", "Maps", "Tides", "Zither"));
    EXPECT_THAT(pane.screen.headers(), ElementsAre(Eq(std::nullopt), Eq(std::nullopt)));
    EXPECT_THAT(pane.screen.footers(), ElementsAre(Eq(std::nullopt), Eq(std::nullopt)));
    EXPECT_EQ(page.specifiers().size(), 6U);
    EXPECT_EQ(page.specifiers().front()->cellType(), platform::PSCellType::group);
}

TEST_F(ExceptionsPage, makesTheFileWithTheFirstTick) {
    open();
    pane.screen.tap("Maps");
    EXPECT_EQ(pane.content(exceptionsFile), Value(only(mapsIdentifier, true)));
}

TEST_F(ExceptionsPage, leavesTheSettingsFileAlone) {
    open();
    pane.screen.tap("Maps");
    EXPECT_EQ(pane.phone.bytes(settingsFile), std::nullopt);

    const Dictionary settings = {{"MultiCenter", false},
                                 {"CloseAllAppsExceptions", Dictionary{{"com.apple.maps", true}}}};
    pane.phone.put(settingsFile, settings);
    const auto before = pane.phone.bytes(settingsFile);
    pane.screen.tap("Maps");
    EXPECT_EQ(pane.phone.bytes(settingsFile), before);
}

TEST_F(ExceptionsPage, neverTellsOfASettingsChangeWithATick) {
    open();
    for (const char* label : {"Clock", "Maps", "Tides", "Zither", "Clock"})
        pane.screen.tap(label);
    const auto notifications = kit::only(kit::Event::Kind::notification, pane.log.take());
    EXPECT_EQ(notifications.size(), 5U);
    EXPECT_THAT(notifications, Each(notification(std::string(exceptionsNotification))));
}

TEST_F(ExceptionsPage, keepsAnEntryThatIsNoTick) {
    pane.phone.put(exceptionsFile, only("com.odd", Dictionary{{"nested", platform::Array{1, "two"}}}));
    open();
    pane.screen.tap("Maps");
    EXPECT_EQ(
        pane.content(exceptionsFile),
        Value(Dictionary{{"com.apple.maps", true}, {"com.odd", Dictionary{{"nested", platform::Array{1, "two"}}}}}));
}

TEST_F(ExceptionsPage, hasAnAdapterForTheSettingsFile) {
    auto& page = dynamic_cast<trivel3::KavixPreferencesPageController&>(open());
    auto row = platform::PSSpecifier::emptyGroupSpecifier();
    row->setIdentifier("HotCorners");
    EXPECT_EQ(page.getPreferences(*row), std::optional(Value(true))) << "the default";

    page.setPreferences_specifier(false, *row);
    EXPECT_EQ(pane.content(settingsFile), Value(only("HotCorners", false)));
    EXPECT_EQ(pane.phone.bytes(exceptionsFile), std::nullopt);
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged()));
    EXPECT_EQ(page.getPreferences(*row), std::optional(Value(false)));
}

}  // namespace
}  // namespace application_pages_test
