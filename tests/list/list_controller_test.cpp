// SPDX-License-Identifier: MIT
#include "platform/list/list_controller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rows.h"

namespace list_test {
namespace {

using kit::atOnce;
using kit::withAnimation;
using platform::NSIndexPath;
using testing::ElementsAre;
using testing::IsEmpty;
namespace event = kit::event;

/// Two rows ahead of the first group, then a group of two, an empty one, and one of one.
class Sections : public testing::Test {
protected:
    const Rows rows = {item("a"), item("b"), group("first", "said"), item("c"),
                       item("d"), group(),   group("last"),          item("e")};
    ShownRows shown{rows};
    RowPage& page = shown.page();
};

TEST_F(Sections, areOpenedByGroupRowsAndByRowsAheadOfTheFirst) {
    EXPECT_EQ(page.numberOfSectionsInTableView(page.table()), 4u);
    EXPECT_THAT(shown.screen.labels(0), ElementsAre("a", "b"));
    EXPECT_THAT(shown.screen.labels(1), ElementsAre("c", "d"));
    EXPECT_THAT(shown.screen.labels(2), IsEmpty());
    EXPECT_THAT(shown.screen.labels(3), ElementsAre("e"));
}

TEST_F(Sections, countNoRowsBeyondTheLast) {
    EXPECT_EQ(page.tableView_numberOfRowsInSection(page.table(), 4), 0u);
}

TEST_F(Sections, takeTitleAndFooterFromTheirGroupRow) {
    EXPECT_THAT(shown.screen.headers(), ElementsAre(std::nullopt, "first", std::nullopt, "last"));
    EXPECT_THAT(shown.screen.footers(), ElementsAre(std::nullopt, "said", std::nullopt, std::nullopt));
    EXPECT_EQ(page.tableView_titleForHeaderInSection(page.table(), 4), std::nullopt);
    EXPECT_EQ(page.tableView_titleForFooterInSection(page.table(), 4), std::nullopt);
}

TEST_F(Sections, listTheirGroupRowFirst) {
    EXPECT_THAT(page.specifiersInGroup(0), ElementsAre(rows[0], rows[1]));
    EXPECT_THAT(page.specifiersInGroup(1), ElementsAre(rows[2], rows[3], rows[4]));
    EXPECT_THAT(page.specifiersInGroup(2), ElementsAre(rows[5]));
    EXPECT_THAT(page.specifiersInGroup(4), IsEmpty());
    EXPECT_EQ(page.groupSpecifier(0), nullptr);
    EXPECT_EQ(page.groupSpecifier(1), rows[2]);
    EXPECT_EQ(page.groupSpecifier(4), nullptr);
}

TEST_F(Sections, leadFromPlaceToPositionAndBack) {
    const std::pair<NSIndexPath, std::size_t> places[] = {
        {{0, 0}, 0}, {{0, 1}, 1}, {{1, 0}, 3}, {{1, 1}, 4}, {{3, 0}, 7}};
    for (const auto& [path, position] : places) {
        EXPECT_EQ(page.indexForIndexPath(path), position) << path;
        EXPECT_EQ(page.indexPathForIndex(position), path) << position;
        EXPECT_EQ(page.specifierAtIndexPath(path), rows[position]) << path;
    }
}

TEST_F(Sections, leadNowhereFromAPlaceThatIsNotThere) {
    for (const NSIndexPath path : {NSIndexPath{0, 2}, {1, 2}, {2, 0}, {3, 1}, {4, 0}, {SIZE_MAX, SIZE_MAX}}) {
        EXPECT_EQ(page.indexForIndexPath(path), rows.size()) << path;
        EXPECT_EQ(page.specifierAtIndexPath(path), nullptr) << path;
    }
}

TEST_F(Sections, giveGroupRowsNoPlace) {
    for (const std::size_t position : {std::size_t{2}, std::size_t{5}, std::size_t{6}, std::size_t{8}, SIZE_MAX}) {
        EXPECT_EQ(page.indexPathForIndex(position), std::nullopt) << position;
    }
}

TEST(EmptyPage, hasNoSections) {
    ShownRows shown({});
    EXPECT_THAT(shown.screen.headers(), IsEmpty());
    EXPECT_EQ(shown.page().indexForIndexPath({0, 0}), 0u);
    EXPECT_EQ(shown.page().indexPathForIndex(0), std::nullopt);
}

TEST(EmptyPage, isWhatAPageThatNobodyFillsShows) {
    kit::TestPlatform host;
    host.addClass<platform::PSListController>("PSListController");
    EXPECT_THAT(host.screen.open("PSListController").specifiers(), IsEmpty());
}

class Changes : public testing::Test {
protected:
    const Row a = item("a");
    const Row b = item("b");
    const Row absent = item("absent");
    const Row first = group("first");
    const Row second = group("second");
    ShownRows shown{Rows{first, a, second, b}};
    RowPage& page = shown.page();

    std::vector<std::string> labels() { return labelsOf(page.specifiers()); }
};

TEST_F(Changes, insertARunAfterARow) {
    page.insertContiguousSpecifiers_afterSpecifier_animated({item("x"), item("y")}, a, true);
    EXPECT_THAT(labels(), ElementsAre("first", "a", "x", "y", "second", "b"));
    EXPECT_THAT(shown.log.take(), ElementsAre(event::insert({"x", "y"}, 2, withAnimation)));
    EXPECT_THAT(shown.screen.labels(0), ElementsAre("a", "x", "y"));
}

TEST_F(Changes, insertAtTheEnd) {
    page.insertSpecifier_afterSpecifier_animated(absent, b, false);
    EXPECT_THAT(labels(), ElementsAre("first", "a", "second", "b", "absent"));
    EXPECT_THAT(shown.log.take(), ElementsAre(event::insert({"absent"}, 4, atOnce)));
}

TEST_F(Changes, insertAfterAGroupRow) {
    page.insertSpecifier_afterSpecifier_animated(absent, second, false);
    EXPECT_THAT(shown.screen.labels(1), ElementsAre("absent", "b"));
}

TEST_F(Changes, openANewSectionWithAnInsertedGroupRow) {
    page.insertContiguousSpecifiers_afterSpecifier_animated({group("between"), item("x")}, a, false);
    EXPECT_THAT(shown.screen.headers(), ElementsAre("first", "between", "second"));
    EXPECT_EQ(page.indexPathForIndex(5), (NSIndexPath{2, 0}));
}

TEST_F(Changes, insertNothingAfterAnAbsentRow) {
    page.insertContiguousSpecifiers_afterSpecifier_animated({item("x")}, absent, true);
    page.insertSpecifier_afterSpecifier_animated(item("x"), nullptr, true);
    page.insertContiguousSpecifiers_afterSpecifier_animated({}, a, true);
    EXPECT_THAT(labels(), ElementsAre("first", "a", "second", "b"));
    EXPECT_THAT(shown.log.take(), IsEmpty());
}

TEST_F(Changes, removeARun) {
    page.removeContiguousSpecifiers_animated({a, second}, true);
    EXPECT_THAT(labels(), ElementsAre("first", "b"));
    EXPECT_THAT(shown.log.take(), ElementsAre(event::remove({"a", "second"}, 1, withAnimation)));
    EXPECT_THAT(shown.screen.labels(0), ElementsAre("b"));
    EXPECT_THAT(shown.screen.headers(), ElementsAre("first"));
}

TEST_F(Changes, removeOneRow) {
    page.removeSpecifier_animated(b, false);
    EXPECT_THAT(labels(), ElementsAre("first", "a", "second"));
    EXPECT_THAT(shown.log.take(), ElementsAre(event::remove({"b"}, 3, atOnce)));
}

TEST_F(Changes, removeAllRows) {
    page.removeContiguousSpecifiers_animated({first, a, second, b}, false);
    EXPECT_THAT(shown.screen.headers(), IsEmpty());
}

TEST_F(Changes, removeNothingThatIsAbsent) {
    page.removeSpecifier_animated(absent, true);
    page.removeSpecifier_animated(nullptr, true);
    page.removeContiguousSpecifiers_animated({}, true);
    page.removeContiguousSpecifiers_animated({absent, a}, true);
    EXPECT_THAT(labels(), ElementsAre("first", "a", "second", "b"));
    EXPECT_THAT(shown.log.take(), IsEmpty());
}

TEST_F(Changes, removeOnlyThePartOfARunThatStandsTogether) {
    page.removeContiguousSpecifiers_animated({a, b}, true);
    EXPECT_THAT(labels(), ElementsAre("first", "second", "b"));
    EXPECT_THAT(shown.log.take(), ElementsAre(event::remove({"a"}, 1, withAnimation)));
}

TEST_F(Changes, reloadARowWhereItStands) {
    page.reloadSpecifier_animated(b, true);
    page.reloadSpecifier_animated(second, false);
    EXPECT_THAT(shown.log.take(),
                ElementsAre(event::reload("b", 3, withAnimation), event::reload("second", 2, atOnce)));
}

TEST_F(Changes, reloadNothingThatIsAbsent) {
    page.reloadSpecifier_animated(absent, true);
    page.reloadSpecifier_animated(nullptr, true);
    EXPECT_THAT(shown.log.take(), IsEmpty());
}

TEST_F(Changes, tellWhetherARowIsShown) {
    EXPECT_TRUE(page.containsSpecifier(second));
    EXPECT_FALSE(page.containsSpecifier(absent));
    page.removeSpecifier_animated(second, false);
    EXPECT_FALSE(page.containsSpecifier(second));
}

TEST_F(Changes, areDroppedWhenTheRowsAreBuiltAnew) {
    EXPECT_EQ(page.timesBuilt, 1);
    page.removeContiguousSpecifiers_animated({a, second}, false);
    shown.log.take();
    page.reloadSpecifiers();
    EXPECT_EQ(page.timesBuilt, 2);
    EXPECT_THAT(labels(), ElementsAre("first", "a", "second", "b"));
    EXPECT_THAT(shown.screen.headers(), ElementsAre("first", "second"));
    EXPECT_THAT(shown.log.take(), ElementsAre(event::reloadTable("RowPage")));
}

TEST_F(Changes, needNobodyToDrawThem) {
    page.setTableHost(nullptr);
    page.insertSpecifier_afterSpecifier_animated(absent, a, true);
    page.reloadSpecifier_animated(absent, true);
    page.removeSpecifier_animated(b, true);
    EXPECT_THAT(labels(), ElementsAre("first", "a", "absent", "second"));
    page.reloadSpecifiers();
    EXPECT_THAT(labels(), ElementsAre("first", "a", "second", "b"));
    EXPECT_THAT(shown.log.take(), IsEmpty());
}

TEST(Rows, areBuiltWhenTheViewIsLoaded) {
    kit::TestPlatform host;
    auto page = std::make_shared<RowPage>(host.services(), Rows{item("a")});
    EXPECT_EQ(page->timesBuilt, 0);
    page->view();
    EXPECT_EQ(page->timesBuilt, 1);
    page->view();
    EXPECT_EQ(page->timesBuilt, 1);
}

TEST(Rows, fillTheScreenWithTheirTable) {
    kit::TestPlatform host(kit::largePhone);
    auto page = std::make_shared<RowPage>(host.services(), Rows{});
    EXPECT_EQ(&page->view(), &page->table());
    EXPECT_EQ(page->table().frame(), (platform::CGRect{0, 0, 414, 736}));
    EXPECT_EQ(page->table().style(), platform::UITableViewStyle::grouped);
}

}  // namespace
}  // namespace list_test
