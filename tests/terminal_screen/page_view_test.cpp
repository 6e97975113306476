// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/terminal_screen/long_page.h"

namespace terminal_screen_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(PageView, drawsTitleRowsAndFooter) {
    LongScreen screen(2);
    EXPECT_THAT(screen.compose(40, 6), ElementsAre("  Rows", "▸   Row 0", "    Row 1", "      That is all.", "", ""));
}

TEST(PageView, producesCellsForTheRowsThatAreSeenAlone) {
    LongScreen screen(10'000);
    screen.compose(80, 22);
    EXPECT_EQ(screen.page->takeProduced(), 21u);
    screen.compose(80, 22);
    EXPECT_EQ(screen.page->takeProduced(), 0u);

    screen.view().scrollLines(1);
    screen.compose(80, 22);
    EXPECT_EQ(screen.page->takeProduced(), 1u);
    screen.view().moveToLast();
    screen.compose(80, 22);
    EXPECT_EQ(screen.page->takeProduced(), 21u);
    EXPECT_THAT(screen.cursorLine(80, 22), HasSubstr("Row 9999"));
}

TEST(PageView, producesSeenRowsAgainWhenTheyAreOld) {
    LongScreen screen(10'000);
    screen.compose(80, 22);
    screen.page->takeProduced();
    screen.view().noteCellOld({0, 3});
    screen.view().noteCellOld({0, 3000});
    screen.compose(80, 22);
    EXPECT_EQ(screen.page->takeProduced(), 1u);
    screen.view().noteCellsOld();
    screen.compose(80, 22);
    EXPECT_EQ(screen.page->takeProduced(), 21u);
}

TEST(PageView, keepsTheCellOfARowThatIsSeen) {
    LongScreen screen(5);
    screen.compose(80, 22);
    const auto row = screen.page->specifiers()[2];
    const auto cell = row->cell();
    ASSERT_TRUE(cell);
    cell->setChecked(true);
    EXPECT_EQ(screen.compose(80, 22)[2], "  ✓ Row 1");
    screen.view().noteCellsOld();
    screen.compose(80, 22);
    EXPECT_EQ(row->cell(), cell);
}

TEST(PageView, letsGoOfCellsThatHaveLeft) {
    LongScreen screen(100);
    screen.compose(80, 10);
    ASSERT_TRUE(screen.page->specifiers()[1]->cell());
    screen.view().moveToLast();
    screen.compose(80, 10);
    EXPECT_FALSE(screen.page->specifiers()[1]->cell());
}

TEST(PageView, keepsTheCursorOnItsRowWhenOthersComeAndGo) {
    LongScreen screen(50);
    screen.compose(80, 10);
    screen.view().moveTo({0, 20});
    ASSERT_THAT(screen.cursorLine(80, 10), HasSubstr("Row 20"));
    const auto rows = screen.page->specifiers();
    screen.page->removeContiguousSpecifiers_animated({rows.begin() + 3, rows.begin() + 8}, true);
    EXPECT_THAT(screen.cursorLine(80, 10), HasSubstr("Row 20"));
    EXPECT_EQ(screen.view().cursor(), (platform::NSIndexPath{0, 15}));
    screen.page->insertContiguousSpecifiers_afterSpecifier_animated({rows.begin() + 3, rows.begin() + 8}, rows[2],
                                                                    true);
    EXPECT_THAT(screen.cursorLine(80, 10), HasSubstr("Row 20"));
}

TEST(PageView, movesTheCursorOnWhenItsRowGoes) {
    LongScreen screen(3);
    screen.compose(80, 10);
    screen.view().moveToLast();
    screen.page->removeSpecifier_animated(screen.page->specifiers()[3], true);
    EXPECT_THAT(screen.cursorLine(80, 10), HasSubstr("Row 1"));
}

TEST(PageView, outlivesTheLastRow) {
    LongScreen screen(1);
    screen.compose(80, 10);
    screen.page->removeSpecifier_animated(screen.page->specifiers()[1], true);
    EXPECT_THAT(screen.compose(80, 3), ElementsAre("  Rows", "      That is all.", ""));
    EXPECT_EQ(screen.view().cursor(), std::nullopt);
    screen.view().moveRows(1);
    screen.view().movePages(-1);
    screen.view().moveToLast();
    EXPECT_EQ(screen.view().cursor(), std::nullopt);
}

TEST(PageView, showsTitleAndFooterWithTheRowsNextToThem) {
    LongScreen screen(30);
    screen.compose(40, 10);
    screen.view().moveToLast();
    EXPECT_THAT(screen.compose(40, 10).back(), HasSubstr("That is all."));
    screen.view().moveToFirst();
    EXPECT_THAT(screen.compose(40, 10).front(), HasSubstr("Rows"));
}

TEST(PageView, movesByScreensWithoutLosingTheCursor) {
    LongScreen screen(100);
    screen.compose(40, 10);
    screen.view().movePages(1);
    EXPECT_THAT(screen.cursorLine(40, 10), HasSubstr("Row 9 "));
    screen.view().movePages(1);
    EXPECT_THAT(screen.cursorLine(40, 10), HasSubstr("Row 18 "));
    screen.view().movePages(-1);
    screen.view().movePages(-1);
    EXPECT_THAT(screen.cursorLine(40, 10), HasSubstr("Row 0 "));
}

TEST(PageView, keepsEachLineWithinItsWidth) {
    LongScreen screen(100);
    for (const std::size_t width : {40u, 57u, 100u}) {
        for (const auto& line : screen.view().compose({width, 12}))
            EXPECT_LE(line.columns(), width);
    }
}

}  // namespace
}  // namespace terminal_screen_test
