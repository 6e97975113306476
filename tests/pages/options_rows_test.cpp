// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "pages/features/options_page.h"
#include "pane.h"

namespace pages_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using trivel3::KavixPreferencesOptionsController;

std::shared_ptr<KavixPreferencesOptionsController> makePage(Pane& pane) {
    return pane.classes.make<KavixPreferencesOptionsController>(optionsPage, pane.services());
}

TEST(OptionsRows, areThoseOfTheTable) {
    Pane pane;
    expectRows(pane, kit::optionsTable());
}

TEST(OptionsRows, areNotTrimmedBeforeThePageAppears) {
    for (const kit::Shape shape : {kit::shortPhone, kit::tablet}) {
        Pane pane(shape);
        auto page = makePage(pane);
        page->view();
        EXPECT_EQ(page->specifiers().size(), kit::optionsTable().rows.size());
        EXPECT_EQ(pane.file(), std::nullopt);
    }
}

TEST(OptionsRows, areBuiltOnceAndKeptForThePagesLife) {
    Pane pane;
    auto& page = pane.openQuietly(optionsPage);
    const auto first = pane.screen.row("Reachable Display");
    page.reloadSpecifiers();
    EXPECT_EQ(pane.screen.row("Reachable Display"), first);
}

TEST(OptionsRows, goWithThePage) {
    Pane pane;
    pane.openQuietly(rootPage);
    pane.openQuietly(optionsPage);
    std::weak_ptr<platform::PSSpecifier> row = pane.screen.row("Reachable Display");
    std::weak_ptr<platform::UIViewController> page = pane.screen.top();
    pane.screen.back();
    EXPECT_TRUE(page.expired());
    EXPECT_TRUE(row.expired());
}

struct Link {
    std::string_view label;
    std::string_view pageClass;
};

class OptionsLink : public testing::TestWithParam<Link> {};

TEST_P(OptionsLink, opensItsPageUnderItsName) {
    Pane pane;
    pane.setFile({{"ReachabilityMode", false}});
    pane.openQuietly(optionsPage);
    pane.screen.tap(GetParam().label);
    EXPECT_EQ(pane.screen.top()->className(), GetParam().pageClass);
    EXPECT_EQ(pane.screen.top()->title(), GetParam().label);
}

INSTANTIATE_TEST_SUITE_P(FeaturePages, OptionsLink,
                         testing::Values(Link{"Quick Launcher", quickLauncherPage},
                                         Link{"Slider Actions", sliderActionsPage},
                                         Link{"Album Artwork", albumArtworkPage}),
                         [](const auto& each) {
                             std::string name(each.param.label);
                             std::erase(name, ' ');
                             return name;
                         });

// The sibling product is not installed here; what happens when it is needs a system image with it.

TEST(OstrelRow, opensThePackagePageWhenTheSiblingIsMissing) {
    Pane pane;
    pane.openQuietly(optionsPage);
    pane.application.schemes = {"cydia"};
    pane.screen.tap("Ostrel");
    EXPECT_THAT(pane.log.take(), ElementsAre(kit::event::openUrl("cydia://package/com.fenwary.ostrel", true)));
}

TEST(OstrelRow, takesARefusedPackagePageInSilence) {
    Pane pane;
    pane.openQuietly(optionsPage);
    pane.screen.tap("Ostrel");
    EXPECT_THAT(pane.log.take(), ElementsAre(kit::event::openUrl("cydia://package/com.fenwary.ostrel", false)));
    EXPECT_STREQ(pane.screen.top()->className(), "KavixPreferencesOptionsController");
}

TEST(OstrelRow, saysThatItIsEnabledWhenTheSiblingIsMissing) {
    Pane pane;
    auto row = makePage(pane)->specifiers().back();
    ASSERT_TRUE(row->propertyForKey("enabled"));
    EXPECT_TRUE(row->isEnabled());
    EXPECT_EQ(row->textForKey("label"), "Ostrel");
    ASSERT_TRUE(row->iconImage());
    EXPECT_EQ(row->iconImage()->name(), "Ostrel");
}

TEST(OstrelRow, isNeverGreyedOrRemoved) {
    for (const kit::Shape shape : {kit::shortPhone, kit::tallPhone, kit::tablet}) {
        Pane pane(shape);
        pane.setFile({{"MultiCenter", false}, {"QuickSwitcher", false}, {"HotCorners", false}});
        pane.openQuietly(optionsPage);
        EXPECT_EQ(pane.screen.labels().back(), "Ostrel");
        EXPECT_FALSE(pane.screen.isGreyed("Ostrel"));
    }
}

struct SiblingPage : platform::PSViewController {
    using PSViewController::PSViewController;
    const char* className() const override { return "OstrelPrefsController"; }
};

TEST(OstrelRow, isDecidedWhenTheRowsAreBuiltAndNotAgain) {
    Pane pane;
    auto& page = pane.openQuietly(optionsPage);
    pane.addClass<SiblingPage>("OstrelPrefsController");
    page.reloadSpecifiers();
    pane.log.take();
    pane.screen.tap("Ostrel");
    EXPECT_THAT(pane.log.take(), ElementsAre(kit::event::openUrl("cydia://package/com.fenwary.ostrel", false)));
    EXPECT_THAT(page.specifiers().back()->detailControllerClass(), IsEmpty());

    pane.openQuietly(optionsPage);
    pane.screen.tap("Ostrel");
    EXPECT_STREQ(pane.screen.top()->className(), "OstrelPrefsController");
}

TEST(OptionsAccess, readsByRowOrByKeyAlike) {
    Pane pane;
    pane.setFile({{"OpenToLastApp", true}});
    pane.openQuietly(optionsPage);
    auto& page = pane.screen.pageAs<KavixPreferencesOptionsController>();
    EXPECT_EQ(page.getPreferences("OpenToLastApp"), platform::Value(true));
    EXPECT_EQ(page.getPreferences(*pane.screen.row("Open to Last App")), platform::Value(true));
    EXPECT_EQ(page.getPreferences("MinimalControlCenterCondition"), platform::Value(1));
    EXPECT_EQ(page.getPreferences("OpenToLastAppWithQS"), std::nullopt);
}

TEST(OptionsAccess, writesByRowOrByKeyAlike) {
    const auto eventsOf = [](const auto& write) {
        Pane pane;
        pane.openQuietly(optionsPage);
        write(pane, pane.screen.pageAs<KavixPreferencesOptionsController>());
        EXPECT_EQ(pane.stored("OpenToLastApp"), platform::Value(true));
        return pane.log.take();
    };
    const auto byRow = eventsOf([](Pane& pane, KavixPreferencesOptionsController& page) {
        page.setPreferences_specifier(true, *pane.screen.row("Open to Last App"));
    });
    const auto byKey = eventsOf(
        [](Pane&, KavixPreferencesOptionsController& page) { page.setPreferences_specifier(true, "OpenToLastApp"); });
    EXPECT_EQ(byRow, byKey);
    EXPECT_THAT(byRow, testing::Contains(kit::event::insert({"Apply to Quick Switcher"}, 10, kit::withAnimation)));
}

TEST(OptionsAccess, showsApplyToQuickSwitcherOffUntilItIsFirstSet) {
    Pane pane;
    pane.setFile({{"OpenToLastApp", true}});
    pane.openQuietly(optionsPage);
    EXPECT_FALSE(pane.screen.isOn("Apply to Quick Switcher"));
    EXPECT_TRUE(pane.screen.moveSwitch("Apply to Quick Switcher", true));
    EXPECT_EQ(pane.stored("OpenToLastAppWithQS"), platform::Value(true));
    EXPECT_TRUE(pane.screen.isOn("Apply to Quick Switcher"));
}

}  // namespace
}  // namespace pages_test
