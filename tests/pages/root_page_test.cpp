// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "pages/list_page_controller.h"
#include "pane.h"
#include "platform/services/mail_composer.h"
#include "platform/services/post_composer.h"
#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"

namespace pages_test {
namespace {

using kit::atOnce;
using kit::withAnimation;
using testing::ElementsAre;
using testing::IsEmpty;
using trivel3::KavixPreferencesListController;
namespace event = kit::event;

std::vector<std::optional<std::string>> footers(bool multiCenter) {
    return kit::expectedFooters(kit::rootTable(), {.multiCenter = multiCenter});
}

TEST(RootPage, hasTheRowsOfItsTable) {
    Pane pane;
    expectRows(pane, kit::rootTable());
}

TEST(RootPage, buildsItsRowsWithTheFirstFooterAlone) {
    Pane pane;
    auto page = pane.classes.make<KavixPreferencesListController>(rootPage, pane.services());
    page->specifiers();
    platform::UITableView table({}, platform::UITableViewStyle::grouped);
    EXPECT_EQ(page->tableView_titleForFooterInSection(table, 0), kit::rootTable().rows.front().footer);
    for (std::size_t section = 1; section < 6; ++section) {
        EXPECT_EQ(page->tableView_titleForFooterInSection(table, section), std::nullopt) << section;
    }
}

TEST(RootPage, setsTheFootersAtOnceWhenItFirstAppears) {
    Pane pane;
    pane.screen.open(rootPage);
    EXPECT_THAT(pane.log.take(), ElementsAre(event::push("KavixPreferencesController"), event::reload("", 2, atOnce),
                                             event::reload("", 4, atOnce)));
    EXPECT_EQ(pane.screen.footers(), footers(true));
    EXPECT_EQ(pane.file(), std::nullopt);
}

TEST(RootPage, showsAllThreeSwitchesOnWithoutAFile) {
    Pane pane;
    pane.openQuietly(rootPage);
    EXPECT_THAT(pane.screen.onLabels(), ElementsAre("Multi-Center", "Quick Switcher", "Hot Corners"));
    EXPECT_THAT(pane.screen.greyedLabels(), IsEmpty());
}

TEST(RootPage, changesBothFootersWithAnimationWhenTheMultiCenterGoes) {
    Pane pane;
    pane.openQuietly(rootPage);
    const auto labels = pane.screen.labels();
    EXPECT_TRUE(pane.screen.moveSwitch("Multi-Center", false));
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged(), event::reload("", 2, withAnimation),
                                             event::reload("", 4, withAnimation)));
    EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{"MultiCenter", false}}));
    EXPECT_EQ(pane.screen.footers(), footers(false));
    EXPECT_EQ(pane.screen.labels(), labels);
    EXPECT_THAT(pane.screen.onLabels(), ElementsAre("Quick Switcher", "Hot Corners"));
}

TEST(RootPage, keepsItsLooksWhenTheOtherSwitchesMove) {
    Pane pane;
    pane.openQuietly(rootPage);
    for (const char* label : {"Quick Switcher", "Hot Corners"}) {
        EXPECT_TRUE(pane.screen.moveSwitch(label, false));
        EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged())) << label;
    }
    EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{"HotCorners", false}, {"QuickSwitcher", false}}));
    EXPECT_EQ(pane.screen.footers(), footers(true));
}

TEST(RootPage, followsAChangeMadeElsewhereWhenItAppearsAgain) {
    Pane pane;
    pane.openQuietly(rootPage);
    pane.setFile({{"MultiCenter", false}});
    pane.screen.appear();
    EXPECT_THAT(pane.log.take(), ElementsAre(event::reload("", 2, atOnce), event::reload("", 4, atOnce)));
    EXPECT_EQ(pane.screen.footers(), footers(false));
}

TEST(RootPage, followsAChangeMadeElsewhereWhenItIsReloaded) {
    Pane pane;
    auto& page = pane.openQuietly(rootPage);
    pane.setFile({{"MultiCenter", false}});
    page.reloadSpecifiers();
    EXPECT_THAT(pane.log.take(), ElementsAre(event::reloadTable("KavixPreferencesController"),
                                             event::reload("", 2, atOnce), event::reload("", 4, atOnce)));
    EXPECT_EQ(pane.screen.footers(), footers(false));
}

TEST(RootPage, updatesItselfOnceAfterAWrite) {
    Pane pane;
    pane.openQuietly(rootPage);
    const auto row = pane.screen.row("Hot Corners");
    pane.phone.takeReads(settingsFile);
    pane.screen.pageAs<KavixPreferencesListController>().setPreferences_specifier(false, *row);
    EXPECT_EQ(pane.phone.takeReads(settingsFile), 2u) << "once for the write and once for the footers";
}

TEST(RootPage, reloadsNoRowTheSecondTime) {
    Pane pane;
    pane.openQuietly(rootPage);
    pane.screen.pageAs<KavixPreferencesListController>().updateSpecifiers(true);
    EXPECT_THAT(pane.log.take(), IsEmpty());
}

TEST(RootPage, changesNothingBeforeItsRowsAreBuilt) {
    Pane pane;
    auto page = pane.classes.make<KavixPreferencesListController>(rootPage, pane.services());
    page->updateSpecifiers(true);
    EXPECT_THAT(pane.log.take(), IsEmpty());
    page->specifiers();
    platform::UITableView table({}, platform::UITableViewStyle::grouped);
    EXPECT_EQ(page->tableView_titleForFooterInSection(table, 1), std::nullopt);
}

TEST(RootPage, tellsOfAChangeEvenWhenTheWriteFailed) {
    Pane pane;
    pane.openQuietly(rootPage);
    pane.phone.setWritesFail(true);
    EXPECT_TRUE(pane.screen.moveSwitch("Multi-Center", false));
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsNotWritten(), settingsChanged()));
    EXPECT_TRUE(pane.screen.isOn("Multi-Center"));
    EXPECT_EQ(pane.screen.footers(), footers(true));
}

TEST(RootPage, opensTheAdvancedOptionsAndTheCreators) {
    Pane pane;
    pane.openQuietly(rootPage);
    pane.screen.tap("Advanced Options");
    EXPECT_STREQ(pane.screen.top()->className(), "KavixPreferencesOptionsController");
    EXPECT_EQ(pane.screen.top()->title(), "Advanced Options");
    EXPECT_TRUE(pane.screen.back());
    pane.screen.tap("The Creators");
    EXPECT_STREQ(pane.screen.top()->className(), "KavixPreferencesProfileController");
}

TEST(RootPage, presentsTheSupportEmailAndDismissesItWhenTheUserIsDone) {
    Pane pane;
    pane.openQuietly(rootPage);
    pane.screen.tap("Fenwary Support");
    EXPECT_THAT(pane.log.take(), ElementsAre(event::present("MFMailComposeViewController", withAnimation)));
    auto composer = std::dynamic_pointer_cast<platform::MFMailComposeViewController>(pane.screen.presented());
    ASSERT_TRUE(composer);
    composer->finish(platform::MFMailComposeResult::sent);
    EXPECT_THAT(pane.log.take(), ElementsAre(event::dismiss(withAnimation)));
}

std::shared_ptr<platform::UIButton> heartButton(platform::PSListController& page) {
    auto item = page.navigationItem().rightBarButtonItem();
    return item ? std::dynamic_pointer_cast<platform::UIButton>(item->customView()) : nullptr;
}

TEST(RootPage, showsTheLogoInPlaceOfItsTitle) {
    Pane pane;
    auto& page = pane.openQuietly(rootPage);
    auto logo = std::dynamic_pointer_cast<platform::UIImageView>(page.navigationItem().titleView());
    ASSERT_TRUE(logo && logo->image);
    EXPECT_EQ(logo->image->name(), "Logo");
}

TEST(RootPage, fitsTheHeartButtonToItsImage) {
    Pane pane;
    auto button = heartButton(pane.openQuietly(rootPage));
    ASSERT_TRUE(button);
    auto heart = button->imageForState(platform::UIControlStateNormal);
    ASSERT_TRUE(heart);
    EXPECT_EQ(heart->name(), "Heart");
    EXPECT_EQ(button->frame(), (platform::CGRect{0, 0, heart->size().width, heart->size().height}));
    EXPECT_GT(heart->size().width, 0);
}

TEST(RootPage, presentsTheShareMessageWhenTheHeartIsTouched) {
    Pane pane;
    heartButton(pane.openQuietly(rootPage))->sendActionsForControlEvents(platform::UIControlEventTouchUpInside);
    EXPECT_THAT(pane.log.take(), ElementsAre(event::present("SLComposeViewController", withAnimation)));
    auto post = std::dynamic_pointer_cast<platform::SLComposeViewController>(pane.screen.presented());
    ASSERT_TRUE(post);
    EXPECT_EQ(post->serviceType(), platform::SLServiceTypeTwitter);
    EXPECT_EQ(post->text(), "I'm loving #Trivel3 from @Fenwary!");
}

TEST(RootPage, takesNoOtherTouchOfTheHeartForATap) {
    Pane pane;
    heartButton(pane.openQuietly(rootPage))->sendActionsForControlEvents(~64u);
    EXPECT_THAT(pane.log.take(), IsEmpty());
}

TEST(RootPage, presentsWhateverItGotWhenNoPostCanBeMade) {
    Pane pane;
    pane.posts.canCompose = false;
    heartButton(pane.openQuietly(rootPage))->sendActionsForControlEvents(platform::UIControlEventTouchUpInside);
    EXPECT_THAT(pane.log.take(), ElementsAre(event::present("nothing", withAnimation)));
}

TEST(RootPage, staysWholeWithoutItsImages) {
    Pane pane(kit::tallPhone, "/nonexistent");
    auto& page = pane.openQuietly(rootPage);
    EXPECT_EQ(page.specifiers().size(), kit::rootTable().rows.size());
    for (const auto& row : page.specifiers())
        EXPECT_FALSE(row->iconImage());
    auto logo = std::dynamic_pointer_cast<platform::UIImageView>(page.navigationItem().titleView());
    ASSERT_TRUE(logo);
    EXPECT_FALSE(logo->image);
    EXPECT_FALSE(heartButton(page)->imageForState(platform::UIControlStateNormal));
}

TEST(RootPage, opensItsBundleForEachImageAnew) {
    const kit::TemporaryFolder system;
    Pane pane(kit::tallPhone, system.path());
    EXPECT_FALSE(pane.openQuietly(rootPage).specifiers()[1]->iconImage());
    const auto bundles = std::filesystem::path("Library/PreferenceBundles");
    std::filesystem::create_directories(system.path() / "Library");
    std::filesystem::create_directory_symlink(kit::stagedSystemImage() / bundles, system.path() / bundles);
    EXPECT_TRUE(pane.openQuietly(rootPage).specifiers()[1]->iconImage());
    std::filesystem::remove(system.path() / bundles);
    EXPECT_FALSE(pane.openQuietly(rootPage).specifiers()[1]->iconImage());
}

TEST(RootPage, releasesItsRowsWhenItGoes) {
    Pane pane;
    pane.openQuietly(rootPage);
    auto page = pane.classes.make<KavixPreferencesListController>(rootPage, pane.services());
    std::weak_ptr<platform::PSSpecifier> row = page->specifiers().front();
    page.reset();
    EXPECT_TRUE(row.expired());
}

class RootHeader : public testing::TestWithParam<kit::Shape> {
protected:
    Pane pane{GetParam()};
    platform::UIView& header = *pane.openQuietly(rootPage).table().tableHeaderView();

    platform::UILabel& label(std::size_t index) const {
        return dynamic_cast<platform::UILabel&>(*header.subviews().at(index));
    }
};

TEST_P(RootHeader, isAsWideAsThePage) {
    const double width = GetParam().width;
    EXPECT_EQ(header.frame(), (platform::CGRect{0, 0, width, 114}));
    ASSERT_EQ(header.subviews().size(), 2u);
    EXPECT_EQ(label(0).frame(), (platform::CGRect{0, 10, width, 53}));
    EXPECT_EQ(label(1).frame(), (platform::CGRect{0, 63, width, 34}));
}

TEST_P(RootHeader, keepsItsHeightAndItsCentreWhenTheWidthChanges) {
    pane.screen.page().table().setFrame({0, 0, GetParam().height, GetParam().width});
    const double width = GetParam().height;
    EXPECT_EQ(header.frame(), (platform::CGRect{0, 0, width, 114}));
    EXPECT_EQ(label(0).frame(), (platform::CGRect{0, 10, width, 53}));
    EXPECT_EQ(label(1).frame(), (platform::CGRect{0, 63, width, 34}));
    EXPECT_EQ(label(0).textAlignment, platform::NSTextAlignment::center);
    EXPECT_EQ(label(1).textAlignment, platform::NSTextAlignment::center);
}

INSTANTIATE_TEST_SUITE_P(OnEachDevice, RootHeader,
                         testing::Values(kit::shortPhone, kit::tallPhone, kit::widePhone, kit::largePhone, kit::tablet),
                         [](const auto& shape) {
                             return std::to_string(static_cast<int>(shape.param.width)) + "x" +
                                    std::to_string(static_cast<int>(shape.param.height));
                         });

TEST(RootHeaderLabels, sayTheProductAndItsMakers) {
    Pane pane;
    auto header = pane.openQuietly(rootPage).table().tableHeaderView();
    EXPECT_EQ(header->autoresizingMask(), 2u);

    auto& title = dynamic_cast<platform::UILabel&>(*header->subviews().at(0));
    EXPECT_EQ(title.text(), "Trivel 3");
    EXPECT_EQ(title.font, (platform::UIFont{"HelveticaNeue-UltraLight", 45}));
    EXPECT_EQ(title.textColor, platform::UIColor::blackColor());
    EXPECT_EQ(title.shadowColor, platform::UIColor::whiteColor());
    EXPECT_EQ(title.shadowOffset, (platform::CGSize{0, 1}));
    EXPECT_EQ(title.numberOfLines, 1);
    EXPECT_EQ(title.autoresizingMask(), 2u);

    auto& subtitle = dynamic_cast<platform::UILabel&>(*header->subviews().at(1));
    EXPECT_EQ(subtitle.text(), "by Movane and Daxon\nThank you for your purchase.");
    EXPECT_EQ(subtitle.font, platform::UIFont::systemFontOfSize(14));
    EXPECT_EQ(subtitle.textColor, platform::UIColor::grayColor());
    EXPECT_EQ(subtitle.shadowColor, std::nullopt);
    EXPECT_EQ(subtitle.numberOfLines, 2);
    EXPECT_EQ(subtitle.autoresizingMask(), 2u);
}

}  // namespace
}  // namespace pages_test
