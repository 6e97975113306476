// SPDX-License-Identifier: MIT
// What the two pages with application rows have in common.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "pages/application_page_controller.h"
#include "pane.h"
#include "platform/list/list_controller.h"

namespace application_pages_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;

constexpr std::string_view hidden[] = {
    "com.apple.AdSheet",
    "com.apple.AdSheetPhone",
    "com.apple.AdSheetPad",
    "com.apple.DataActivation",
    "com.apple.DemoApp",
    "com.apple.fieldtest",
    "com.apple.iosdiagnostics",
    "com.apple.iphoneos.iPodOut",
    "com.apple.TrustMe",
    "com.apple.WebSheet",
    "com.apple.springboard",
    "com.apple.purplebuddy",
    "com.apple.datadetectors.DDActionsService",
    "com.apple.FacebookAccountMigrationDialog",
    "com.apple.iad.iAdOptOut",
    "com.apple.ios.StoreKitUIService",
    "com.apple.TextInput.kbd",
    "com.apple.MailCompositionService",
    "com.apple.mobilesms.compose",
    "com.apple.quicklook.quicklookd",
    "com.apple.ShoeboxUIService",
    "com.apple.social.remoteui.SocialUIService",
    "com.apple.WebViewService",
    "com.apple.gamecenter.GameCenterUIService",
    "com.apple.appleaccount.AACredentialRecoveryDialog",
    "com.apple.CompassCalibrationViewService",
    "com.apple.WebContentFilter.remoteUI.WebContentAnalysisUI",
    "com.apple.PassbookUIService",
    "com.apple.uikit.PrintStatus",
    "com.apple.Copilot",
    "com.apple.MusicUIService",
    "com.apple.AccountAuthenticationDialog",
    "com.apple.MobileReplayer",
    "com.apple.SiriViewService",
};

/// An app-list service that is told what to say, and how often it was asked.
class ScriptedAppList final : public platform::ALApplicationList {
public:
    struct Script {
        Applications system;
        Applications user;
        std::shared_ptr<const platform::UIImage> icon;
        std::vector<std::string> iconsAskedFor;
        int listsAskedFor = 0;
    };

    explicit ScriptedAppList(Script& script) : _script(script) {}

    Applications applications() override {
        ++_script.listsAskedFor;
        Applications all = _script.system;
        all.insert(_script.user.begin(), _script.user.end());
        return all;
    }
    Applications applicationsFilteredBySystem(bool isSystemApplication) override {
        return isSystemApplication ? _script.system : _script.user;
    }
    std::shared_ptr<const platform::UIImage> iconOfSize_forDisplayIdentifier(int size,
                                                                             std::string_view identifier) override {
        EXPECT_EQ(size, 29);
        _script.iconsAskedFor.emplace_back(identifier);
        return _script.icon;
    }

private:
    Script& _script;
};

class ApplicationRows : public testing::TestWithParam<TickPage> {
protected:
    void addScriptedService() {
        pane.classes.add({platform::ALApplicationList::className,
                          [this](platform::Platform&) { return std::make_shared<ScriptedAppList>(script); }});
    }

    platform::PSListController& open() { return pane.openQuietly(GetParam().className); }
    std::vector<std::string> systemLabels() { return pane.screen.labels(GetParam().firstApplicationSection); }
    std::vector<std::string> userLabels() { return pane.screen.labels(GetParam().firstApplicationSection + 1); }
    std::size_t sectionCount() {
        auto& page = pane.screen.page();
        return page.numberOfSectionsInTableView(page.table());
    }

    Pane pane;
    ScriptedAppList::Script script;
};

INSTANTIATE_TEST_SUITE_P(OnBothPages, ApplicationRows, testing::Values(closeAllApps, exceptions));

TEST_P(ApplicationRows, standInTheOrderOfTheirIdentifiers) {
    addScriptedService();
    script.user = {{"com.b.zeta", "Alpha"}, {"com.a.omega", "Zulu"}};
    open();
    EXPECT_THAT(userLabels(), ElementsAre("Zulu", "Alpha"));
}

TEST_P(ApplicationRows, orderUppercaseBeforeLowercase) {
    addScriptedService();
    script.system = {{"com.apple", "lower"}, {"com.Example", "upper"}, {"Com.x", "first"}, {"com.\u00E9", "last"}};
    open();
    EXPECT_THAT(systemLabels(), ElementsAre("first", "upper", "lower", "last"));
}

TEST_P(ApplicationRows, comeInTwoGroupsAfterTheOtherRows) {
    addScriptedService();
    script.system = {{"com.apple.clock", "Clock"}};
    script.user = {{"com.a", "A"}, {"com.z", "Z"}};
    open();
    EXPECT_EQ(sectionCount(), GetParam().firstApplicationSection + 2);
    EXPECT_THAT(systemLabels(), ElementsAre("Clock"));
    EXPECT_THAT(userLabels(), ElementsAre("A", "Z"));
}

TEST_P(ApplicationRows, endWithAGroupRowWhenTheUserHasInstalledNothing) {
    addScriptedService();
    script.system = {{"com.apple.clock", "Clock"}};
    const auto& page = open();
    EXPECT_THAT(userLabels(), IsEmpty());
    EXPECT_THAT(page.groupSpecifier(GetParam().firstApplicationSection + 1), NotNull());
}

TEST_P(ApplicationRows, haveGroupsWithoutFooters) {
    addScriptedService();
    open();
    auto footers = pane.screen.footers();
    EXPECT_EQ(footers[footers.size() - 1], std::nullopt);
    EXPECT_EQ(footers[footers.size() - 2], std::nullopt);
}

TEST_P(ApplicationRows, areListItemsOfThePageWithTheBundleIdentifier) {
    addScriptedService();
    script.user = {{"com.example.tides", "Tides"}};
    auto& page = open();
    const auto row = pane.screen.row("Tides");
    EXPECT_EQ(row->cellType(), platform::PSCellType::listItem);
    EXPECT_EQ(row->identifier(), "com.example.tides");
    EXPECT_EQ(row->target(), &page);
    EXPECT_FALSE(row->getter());
    EXPECT_FALSE(row->setter());
    EXPECT_EQ(row->detailControllerClass(), "");
    EXPECT_EQ(row->userInfo(), std::nullopt);
}

TEST_P(ApplicationRows, leaveOutWhatNoUserEverRunsFromBothGroups) {
    addScriptedService();
    for (const std::string_view identifier : hidden) {
        script.system.emplace(identifier, "hidden");
        script.user.emplace(identifier, "hidden");
    }
    script.system.emplace("com.apple.clock", "Clock");
    script.user.emplace("com.example.tides", "Tides");
    EXPECT_EQ(script.user.size(), 35U);
    open();
    EXPECT_THAT(systemLabels(), ElementsAre("Clock"));
    EXPECT_THAT(userLabels(), ElementsAre("Tides"));
}

TEST_P(ApplicationRows, showWhatIsOnlyLikeAHiddenIdentifier) {
    addScriptedService();
    script.user = {{"com.apple.Springboard", "other case"},
                   {"com.apple.springboard.x", "longer"},
                   {"com.apple.springboar", "shorter"}};
    open();
    EXPECT_THAT(userLabels(), ElementsAre("other case", "shorter", "longer"));
}

TEST_P(ApplicationRows, areNamedByTheWholeList) {
    addScriptedService();
    script.system = {{"com.apple.clock", "Clock"}};
    script.user = {{"com.apple.clock", "another name"}};
    open();
    EXPECT_THAT(userLabels(), ElementsAre("Clock"));
}

TEST_P(ApplicationRows, areAbsentWithoutTheService) {
    const auto& page = open();
    EXPECT_EQ(sectionCount(), GetParam().firstApplicationSection + 2);
    EXPECT_THAT(systemLabels(), IsEmpty());
    EXPECT_THAT(userLabels(), IsEmpty());
    EXPECT_THAT(page.groupSpecifier(GetParam().firstApplicationSection), NotNull());
    EXPECT_THAT(page.groupSpecifier(GetParam().firstApplicationSection + 1), NotNull());
}

TEST_P(ApplicationRows, areAbsentWhenTheSystemImageHasNoAppListBundle) {
    const kit::TemporaryFolder emptyImage;
    Pane bare(kit::tallPhone, emptyImage.path().string());
    app_list_test::installUser(bare.phone, "com.example.tides", "Tides");
    EXPECT_FALSE(app_list_test::loadAppList(bare));
    const auto& page = bare.openQuietly(GetParam().className);
    EXPECT_EQ(bare.screen.labels().size(), GetParam().firstApplicationSection);
    EXPECT_THAT(page.groupSpecifier(GetParam().firstApplicationSection + 1), NotNull());
}

TEST_P(ApplicationRows, ofARealPhoneAreFoundThroughTheLoadedBundle) {
    PaneWithApplications real;
    real.openQuietly(GetParam().className);
    EXPECT_THAT(real.screen.labels(GetParam().firstApplicationSection), ElementsAre("Clock", "Maps"));
    EXPECT_THAT(real.screen.labels(GetParam().firstApplicationSection + 1), ElementsAre("Tides", "Zither"));
}

TEST_P(ApplicationRows, areBuiltOnce) {
    addScriptedService();
    script.user = {{"com.example.tides", "Tides"}};
    auto& page = open();
    const auto first = page.specifiers();
    script.user = {{"com.example.other", "Other"}};
    pane.screen.appear();
    page.reloadSpecifiers();
    EXPECT_EQ(page.specifiers(), first);
    EXPECT_EQ(script.listsAskedFor, 1);
}

TEST_P(ApplicationRows, showWhatWasInstalledWhenThePageIsOpenedAnew) {
    PaneWithApplications real;
    real.openQuietly(GetParam().className);
    app_list_test::installUser(real.phone, "com.example.new", "New");
    real.phone.remove(std::string(app_list_test::userFolder).append("/").append(zitherIdentifier));
    real.screen.page().reloadSpecifiers();
    EXPECT_THAT(real.screen.labels(GetParam().firstApplicationSection + 1), ElementsAre("Tides", "Zither"));
    real.openQuietly(GetParam().className);
    EXPECT_THAT(real.screen.labels(GetParam().firstApplicationSection + 1), ElementsAre("New", "Tides"));
}

TEST_P(ApplicationRows, ofAnApplicationThatWasUpgradedInItsFolderAreTickedUnderItsIdentifierOfNow) {
    PaneWithApplications real;
    real.openQuietly(GetParam().className);
    app_list_test::install(
        real.phone, std::string(app_list_test::userFolder).append("/").append(tidesIdentifier).append("/Installed.app"),
        app_list_test::info("com.example.tides2", "Tides 2"));
    real.openQuietly(GetParam().className);
    EXPECT_THAT(real.screen.labels(GetParam().firstApplicationSection + 1), ElementsAre("Tides 2", "Zither"));
    real.screen.tap("Tides 2");
    EXPECT_EQ(real.ticks(GetParam()), platform::Value(only("com.example.tides2", true)));
}

TEST_P(ApplicationRows, comeFromTheServiceThatIsThereNow) {
    Pane before;
    before.openQuietly(GetParam().className);
    addScriptedService();
    script.user = {{"com.a", "A"}};
    open();
    EXPECT_THAT(userLabels(), ElementsAre("A"));
    Pane after;
    after.openQuietly(GetParam().className);
    EXPECT_THAT(after.screen.labels(GetParam().firstApplicationSection + 1), IsEmpty());
}

TEST_P(ApplicationRows, reloadIsToldToTheTable) {
    addScriptedService();
    auto& page = open();
    page.reloadSpecifiers();
    EXPECT_THAT(pane.log.take(), ElementsAre(kit::event::reloadTable(std::string(GetParam().className))));
}

class ApplicationIcons : public ApplicationRows {
protected:
    ApplicationIcons() {
        addScriptedService();
        script.user = {{"com.a", "A"}, {"com.b", "B"}};
        script.icon = platform::UIImage::fromPixels("icon", 1, 1, {1, 2, 3, 4}, 1);
    }
};

INSTANTIATE_TEST_SUITE_P(OnBothPages, ApplicationIcons, testing::Values(closeAllApps, exceptions));

TEST_P(ApplicationIcons, areNotFetchedWhileTheRowsAreBuilt) {
    open();
    EXPECT_THAT(script.iconsAskedFor, IsEmpty());
    EXPECT_THAT(pane.screen.row("A")->iconImage(), IsNull());
}

TEST_P(ApplicationIcons, areFetchedWhenTheirRowIsFirstShown) {
    open();
    const auto cell = pane.screen.cell("B");
    EXPECT_THAT(script.iconsAskedFor, ElementsAre("com.b"));
    EXPECT_EQ(cell->imageView()->image, script.icon);
    EXPECT_EQ(pane.screen.row("B")->iconImage(), script.icon);
}

TEST_P(ApplicationIcons, areKeptInTheirRow) {
    auto& page = open();
    for (int time = 0; time < 3; ++time) {
        pane.screen.cell("A");
        page.reloadSpecifiers();
    }
    EXPECT_THAT(script.iconsAskedFor, ElementsAre("com.a"));
    EXPECT_EQ(pane.screen.cell("A")->imageView()->image, script.icon);
}

TEST_P(ApplicationIcons, areFetchedAnewByANewPage) {
    open();
    pane.screen.cell("A");
    open();
    pane.screen.cell("A");
    EXPECT_THAT(script.iconsAskedFor, ElementsAre("com.a", "com.a"));
}

TEST_P(ApplicationIcons, areAskedForAgainWhenThereWasNone) {
    script.icon = nullptr;
    open();
    pane.screen.cell("A");
    EXPECT_THAT(pane.screen.row("A")->propertyForKey("iconImage"), IsNull());
    pane.screen.cell("A");
    EXPECT_THAT(script.iconsAskedFor, ElementsAre("com.a", "com.a"));
}

TEST_P(ApplicationIcons, doNotHideTheCheckmark) {
    pane.setTicks(GetParam(), only("com.a", true));
    open();
    EXPECT_TRUE(pane.screen.cell("A")->isChecked());
    EXPECT_THAT(pane.screen.cell("A")->imageView()->image, NotNull());
}

TEST_P(ApplicationIcons, areNotSetWhenTheServiceIsGone) {
    open();
    EXPECT_THAT(pane.screen.cell("A")->imageView()->image, NotNull());
    Pane bare;
    const auto cell = std::make_shared<platform::PSTableCell>(
        platform::PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
            "A", nullptr, nullptr, nullptr, {}, platform::PSCellType::listItem, {}));
    cell->specifier()->setIdentifier("com.a");
    trivel3::fillApplicationIcon(bare.services(), *cell);
    EXPECT_THAT(cell->specifier()->propertyForKey("iconImage"), IsNull());
}

}  // namespace
}  // namespace application_pages_test
