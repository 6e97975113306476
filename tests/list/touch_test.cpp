// SPDX-License-Identifier: MIT
// What a finger on a row does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rows.h"

namespace list_test {
namespace {

using platform::PSSpecifier;
using testing::ElementsAre;
using testing::IsEmpty;
namespace event = kit::event;

class NextPage : public platform::PSListController {
public:
    using PSListController::PSListController;
    const char* className() const override { return "NextPage"; }
};

class NoPage : public platform::Object {
public:
    explicit NoPage(platform::Platform&) {}
};

TEST(Touch, followsALink) {
    ShownRows shown({link("Onward", "NextPage")});
    shown.addClass<NextPage>("NextPage");
    const auto row = shown.screen.row("Onward");
    shown.screen.tap("Onward");
    EXPECT_THAT(shown.log.take(), ElementsAre(event::push("NextPage")));
    EXPECT_EQ(shown.screen.page().specifier(), row);
    EXPECT_EQ(shown.screen.page().title(), "Onward");
}

TEST(Touch, makesANewPageEachTime) {
    ShownRows shown({link("Onward", "NextPage")});
    shown.addClass<NextPage>("NextPage");
    shown.screen.tap("Onward");
    std::weak_ptr<platform::UIViewController> first = shown.screen.top();
    EXPECT_TRUE(shown.screen.back());
    EXPECT_TRUE(first.expired());
    shown.screen.tap("Onward");
    EXPECT_STREQ(shown.screen.top()->className(), "NextPage");
}

TEST(Touch, doesNothingOnALinkThatLeadsNowhere) {
    ShownRows shown(
        {link("unknown class", "NoSuchPage"), link("no class", ""), link("no page", "NoPage"), item("no link")});
    shown.addClass<NoPage>("NoPage");
    for (const auto& label : shown.screen.labels())
        shown.screen.tap(label);
    EXPECT_THAT(shown.log.take(), IsEmpty());
    EXPECT_STREQ(shown.screen.top()->className(), "RowPage");
}

TEST(Touch, runsAnActionInPlaceOfTheLink) {
    std::vector<std::string> ran;
    const auto remember = [&ran](PSSpecifier& row) { ran.push_back(row.name()); };
    ShownRows shown({withAction(link("link", "NextPage"), remember), withAction(item("item"), remember)});
    shown.addClass<NextPage>("NextPage");
    shown.screen.tap("link");
    shown.screen.tap("item");
    EXPECT_THAT(ran, ElementsAre("link", "item"));
    EXPECT_THAT(shown.log.take(), IsEmpty());
}

TEST(Touch, leavesGreyedRowsAlone) {
    int ran = 0;
    ShownRows shown(
        {greyed(link("link", "NextPage")), greyed(withAction(item("item"), [&ran](PSSpecifier&) { ++ran; }))});
    shown.addClass<NextPage>("NextPage");
    shown.screen.tap("link");
    shown.screen.tap("item");
    EXPECT_EQ(ran, 0);
    EXPECT_THAT(shown.log.take(), IsEmpty());
    EXPECT_EQ(shown.page().table().indexPathForSelectedRow(), std::nullopt);
}

TEST(Touch, reachesOnlyRowsThatAreThere) {
    int ran = 0;
    ShownRows shown({group(), withAction(item("a"), [&ran](PSSpecifier&) { ++ran; })});
    for (const platform::NSIndexPath path : {platform::NSIndexPath{0, 1}, {1, 0}, {SIZE_MAX, 0}}) {
        EXPECT_FALSE(shown.page().table().touchRowAtIndexPath(path)) << path;
    }
    EXPECT_EQ(ran, 0);
}

TEST(Touch, doesNotMoveASwitch) {
    int calls = 0;
    ShownRows shown({toggle("a", nullptr, [&calls](const platform::Value&, PSSpecifier&) { ++calls; })});
    shown.screen.tap("a");
    EXPECT_EQ(calls, 0);
}

TEST(Touch, selectsTheRowUntilItIsDeselected) {
    ShownRows shown({group(), item("a"), item("b")});
    auto& table = shown.page().table();
    shown.screen.tap("b");
    EXPECT_EQ(table.indexPathForSelectedRow(), (platform::NSIndexPath{0, 1}));
    table.deselectRowAtIndexPath_animated({0, 0}, false);
    EXPECT_EQ(table.indexPathForSelectedRow(), (platform::NSIndexPath{0, 1}));
    table.deselectRowAtIndexPath_animated({0, 1}, false);
    EXPECT_EQ(table.indexPathForSelectedRow(), std::nullopt);
}

TEST(Touch, mayTakeTheTouchedRowAway) {
    ShownRows shown({group(), item("a"), item("b")});
    RowPage& page = shown.page();
    shown.screen.row("b")->action = [&page](PSSpecifier&) {
        page.removeSpecifier_animated(page.specifiers().back(), false);
    };
    shown.screen.tap("b");
    EXPECT_THAT(shown.screen.labels(), ElementsAre("a"));
}

TEST(Touch, mayReloadThePage) {
    ShownRows shown({group(), item("a")});
    RowPage& page = shown.page();
    shown.screen.row("a")->action = [&page](PSSpecifier&) { page.reloadSpecifiers(); };
    shown.screen.tap("a");
    EXPECT_THAT(shown.log.take(), ElementsAre(event::reloadTable("RowPage")));
}

TEST(Touch, goesNowhereOnAPageThatIsOnNoStack) {
    kit::TestPlatform host;
    host.addClass<NextPage>("NextPage");
    auto page = std::make_shared<RowPage>(host.services(), Rows{link("Onward", "NextPage")});
    EXPECT_TRUE(page->table().touchRowAtIndexPath({0, 0}));
    EXPECT_THAT(host.log.take(), IsEmpty());
}

}  // namespace
}  // namespace list_test
