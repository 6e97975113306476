// SPDX-License-Identifier: MIT
#include "support/creators_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "support/profile_cell.h"
#include "tests/kit/pane.h"

namespace trivel3 {
namespace {

using platform::NSIndexPath;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr NSIndexPath first{0, 0};
constexpr NSIndexPath second{1, 0};
constexpr NSIndexPath maker{2, 0};

class CreatorsPage : public testing::Test {
protected:
    /// The page as the root page's link row opens it.
    KavixPreferencesProfileController& open() {
        platform.openQuietly("KavixPreferencesController");
        platform.screen.tap("The Creators");
        platform.log.take();
        return dynamic_cast<KavixPreferencesProfileController&>(*platform.screen.top());
    }
    static platform::UITableView& tableOf(KavixPreferencesProfileController& page) {
        return dynamic_cast<platform::UITableView&>(page.view());
    }
    static std::shared_ptr<KavixPreferencesProfileCell> produce(platform::UITableView& table, NSIndexPath path) {
        return std::dynamic_pointer_cast<KavixPreferencesProfileCell>(table.produceCellForRowAtIndexPath(path));
    }
    std::vector<kit::Event> eventsOfTap(NSIndexPath path) {
        platform::UITableView& table = tableOf(open());
        EXPECT_TRUE(table.touchRowAtIndexPath(path));
        EXPECT_FALSE(table.indexPathForSelectedRow()) << "the row stays selected";
        return platform.log.take();
    }

    static std::string nameOf(const platform::UIImageView& view) { return view.image ? view.image->name() : ""; }

    kit::Pane platform;
};

TEST_F(CreatorsPage, bearsTheNameOfTheRowThatOpenedIt) {
    auto& page = open();
    EXPECT_EQ(page.title(), "The Creators");
    page.setSpecifier(platform::PSSpecifier::groupSpecifierWithName("Somebody"));
    EXPECT_EQ(page.title(), "Somebody");
}

TEST_F(CreatorsPage, makesAGroupedTableOfItsOwnWithoutASize) {
    KavixPreferencesProfileController page(platform.services());
    platform::UITableView& table = tableOf(page);
    EXPECT_EQ(table.style(), platform::UITableViewStyle::grouped);
    EXPECT_EQ(table.frame(), platform::CGRect{});
    EXPECT_EQ(table.dataSource(), &page);
    EXPECT_EQ(table.delegate(), &page);
}

TEST_F(CreatorsPage, fillsTheScreenOnceItIsShown) {
    EXPECT_EQ(tableOf(open()).frame(), platform.services().screen.bounds);
}

TEST_F(CreatorsPage, hasThreeSectionsOfOneRowEach) {
    auto& page = open();
    platform::UITableView& table = tableOf(page);
    EXPECT_EQ(page.numberOfSectionsInTableView(table), 3u);
    for (std::size_t section = 0; section < 3; ++section)
        EXPECT_EQ(page.tableView_numberOfRowsInSection(table, section), 1u);
}

TEST_F(CreatorsPage, givesCreatorsTallRowsAndTheMakerAPlainOne) {
    auto& page = open();
    platform::UITableView& table = tableOf(page);
    const auto expectHeight = [&](NSIndexPath path, double height) {
        EXPECT_EQ(page.tableView_heightForRowAtIndexPath(table, path), height);
        EXPECT_EQ(page.tableView_estimatedHeightForRowAtIndexPath(table, path), height);
        EXPECT_EQ(produce(table, path)->frame().height, height);
    };
    expectHeight(first, 106);
    expectHeight(second, 106);
    expectHeight(maker, 44);
}

TEST_F(CreatorsPage, showsTheFirstCreator) {
    const auto cell = produce(tableOf(open()), first);
    EXPECT_EQ(nameOf(*cell->avatarView()), "Daxon");
    EXPECT_EQ(cell->nameLabel()->text(), "Daxon (@Daxon_QT)");
}

TEST_F(CreatorsPage, tellsTheFirstCreatorsTrade) {
    const std::string biography = produce(tableOf(open()), first)->infoLabel()->text().value_or("");
    std::vector<std::string> lines(1);
    for (const char letter : biography)
        letter == '\n' ? lines.emplace_back() : lines.back() += letter;
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_THAT(lines[0], testing::EndsWith(","));
    EXPECT_THAT(lines[1], testing::StartsWith("Trivel 3, Ostrel, "));
    EXPECT_EQ(std::ranges::count(lines[1], ','), 4);
    EXPECT_THAT(lines[1], testing::EndsWith(","));
    EXPECT_EQ(lines[2], "Founder of Fenwary.");
}

TEST_F(CreatorsPage, showsTheSecondCreator) {
    const auto cell = produce(tableOf(open()), second);
    EXPECT_EQ(nameOf(*cell->avatarView()), "Movane");
    EXPECT_EQ(cell->nameLabel()->text(), "Movane (@MovaneX)");
    EXPECT_EQ(cell->infoLabel()->text(), "Don't be afraid.\nI know it's not easy.");
}

TEST_F(CreatorsPage, showsTheMakerInAPlainRowUnderTheBadge) {
    const auto cell = produce(tableOf(open()), maker);
    EXPECT_EQ(cell->textLabel()->text(), "Follow Fenwary");
    EXPECT_EQ(nameOf(*cell->imageView()), "Logo");
    EXPECT_FALSE(cell->avatarView()->image);
    EXPECT_FALSE(cell->nameLabel()->text());
    EXPECT_FALSE(cell->infoLabel()->text());
    EXPECT_EQ(nameOf(*cell->twitterView()), "Twitter");
}

TEST_F(CreatorsPage, pointsOnwardFromEveryRow) {
    platform::UITableView& table = tableOf(open());
    for (const NSIndexPath path : {first, second, maker}) {
        const auto cell = produce(table, path);
        EXPECT_EQ(cell->accessoryType, platform::UITableViewCellAccessoryType::disclosureIndicator);
        EXPECT_EQ(cell->style(), platform::UITableViewCellStyle::subtitle);
        EXPECT_EQ(cell->reuseIdentifier(), "KavixPreferencesProfileCell");
    }
}

TEST_F(CreatorsPage, givesASectionThatNobodyKnowsTheDisclosureIndicatorAlone) {
    auto& page = open();
    const auto cell = std::dynamic_pointer_cast<KavixPreferencesProfileCell>(
        page.tableView_cellForRowAtIndexPath(tableOf(page), {3, 0}));
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->accessoryType, platform::UITableViewCellAccessoryType::disclosureIndicator);
    EXPECT_FALSE(cell->avatarView()->image);
    EXPECT_FALSE(cell->nameLabel()->text());
    EXPECT_FALSE(cell->textLabel()->text());
}

TEST_F(CreatorsPage, usesACellAgainThatHasLeftTheScreen) {
    platform::UITableView& table = tableOf(open());
    const auto cell = produce(table, first);
    EXPECT_NE(produce(table, second), cell) << "while it is still on the screen";
    table.enqueueReusableCell(cell);
    EXPECT_EQ(produce(table, second), cell);
    EXPECT_EQ(cell->nameLabel()->text(), "Movane (@MovaneX)");
}

TEST_F(CreatorsPage, leavesNothingOfACreatorInTheMakersRow) {
    platform::UITableView& table = tableOf(open());
    const auto cell = produce(table, first);
    table.enqueueReusableCell(cell);
    ASSERT_EQ(produce(table, maker), cell);
    EXPECT_FALSE(cell->avatarView()->image);
    EXPECT_FALSE(cell->nameLabel()->text());
    EXPECT_FALSE(cell->infoLabel()->text());
    EXPECT_EQ(cell->textLabel()->text(), "Follow Fenwary");
}

TEST_F(CreatorsPage, leavesTheMakersTextAndLogoBeneathACreatorInAReusedCell) {
    for (const auto& [path, creator] : {std::pair{first, "Daxon (@Daxon_QT)"}, {second, "Movane (@MovaneX)"}}) {
        platform::UITableView& table = tableOf(open());
        const auto cell = produce(table, maker);
        table.enqueueReusableCell(cell);
        ASSERT_EQ(produce(table, path), cell);
        EXPECT_EQ(cell->nameLabel()->text(), creator);
        EXPECT_EQ(cell->textLabel()->text(), "Follow Fenwary");
        EXPECT_EQ(nameOf(*cell->imageView()), "Logo");
    }
}

TEST_F(CreatorsPage, opensTheWebWhereThereIsNoClient) {
    EXPECT_THAT(eventsOfTap(first), ElementsAre(kit::event::canOpenUrl("tweetbot:///user_profile/Daxon_QT", false),
                                                kit::event::canOpenUrl("twitter:///user?screen_name=Daxon_QT", false),
                                                kit::event::openUrl("https://twitter.com/Daxon_QT", false)));
}

TEST_F(CreatorsPage, opensTheIndependentClientBeforeAllElse) {
    platform.application.schemes = {"tweetbot", "twitter", "https"};
    EXPECT_THAT(eventsOfTap(maker), ElementsAre(kit::event::canOpenUrl("tweetbot:///user_profile/Fenwary", true),
                                                kit::event::openUrl("tweetbot:///user_profile/Fenwary", true)));
}

TEST_F(CreatorsPage, opensTheNetworksApplicationBeforeTheWeb) {
    platform.application.schemes = {"twitter", "https"};
    EXPECT_THAT(eventsOfTap(second), ElementsAre(kit::event::canOpenUrl("tweetbot:///user_profile/MovaneX", false),
                                                 kit::event::canOpenUrl("twitter:///user?screen_name=MovaneX", true),
                                                 kit::event::openUrl("twitter:///user?screen_name=MovaneX", true)));
}

/// Notes whether the table has a selected row when an address is asked for or opened.
struct WatchingApplication final : platform::UIApplication {
    bool canOpenURL(std::string_view) override { return note(); }
    bool openURL(std::string_view) override { return note(); }
    bool note() {
        selected.push_back(table->indexPathForSelectedRow().has_value());
        return false;
    }
    platform::UITableView* table = nullptr;
    std::vector<bool> selected;
};

TEST_F(CreatorsPage, deselectsTheRowBeforeItAsksForAnAddress) {
    WatchingApplication application;
    platform::Platform& usual = platform.services();
    platform::Platform watched{usual.files,       usual.notifications, usual.classes, usual.system, application,
                               usual.deviceQuery, usual.mail,          usual.posts,   usual.device, usual.screen};
    KavixPreferencesProfileController page(watched);
    application.table = &tableOf(page);
    EXPECT_TRUE(application.table->touchRowAtIndexPath(first));
    EXPECT_THAT(application.selected, ElementsAre(false, false, false));
}

TEST_F(CreatorsPage, opensNothingForASectionThatNobodyKnows) {
    auto& page = open();
    page.tableView_didSelectRowAtIndexPath(tableOf(page), {3, 0});
    EXPECT_THAT(platform.log.take(), IsEmpty());
}

TEST_F(CreatorsPage, readsAndWritesNoSettings) {
    platform::UITableView& table = tableOf(open());
    platform.phone.takeReads(kit::settingsFile);
    for (const NSIndexPath path : {first, second, maker}) {
        produce(table, path);
        table.touchRowAtIndexPath(path);
    }
    EXPECT_EQ(platform.phone.takeReads(kit::settingsFile), 0u);
    EXPECT_THAT(kit::only(kit::Event::Kind::write, platform.log.all()), IsEmpty());
}

}  // namespace
}  // namespace trivel3
