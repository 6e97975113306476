// SPDX-License-Identifier: MIT
// The rules that every page's choice rows share, on pages made up for the purpose.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

#include "pages/list_page_controller.h"
#include "pane.h"

namespace pages_test {
namespace choice_rows_test {

namespace {

using kit::withAnimation;
using platform::PSSpecifier;
using testing::ElementsAre;
using testing::IsEmpty;
using trivel3::AfterChoice;
using trivel3::choice;
using trivel3::Choice;
using trivel3::ChoiceMode;
using trivel3::PageTable;
using trivel3::Row;
using trivel3::titledGroup;
namespace event = kit::event;

constexpr auto singleKey = "QuickLauncherAutoDismissDelay";  // 3 by default
constexpr auto flagKey = "AlbumArtworkAutoDisplay";          // 6 by default
constexpr auto unknownKey = "NoSuchSetting";

constexpr Choice single = {singleKey, ChoiceMode::singleValue, AfterChoice::updateSpecifiers};
constexpr Choice flags = {flagKey, ChoiceMode::flagSet};

// A table names the catalogue's settings alone; what a row's user info names is another matter.
constexpr Row unknown(const char* label, int value) {
    return {.kind = platform::PSCellType::listItem, .label = label, .key = unknownKey, .value = value};
}

constexpr Row rows[] = {
    titledGroup("Single"),           choice("One", single, 1),
    choice("Three", single, 3),      titledGroup("Flags"),
    choice("No flag", flags, 0),     choice("First flag", flags, 1),
    choice("Second flag", flags, 2), choice("Third flag", flags, 4),
    titledGroup("Others"),           unknown("Unknown 0", 0),
    unknown("Unknown 1", 1),         trivel3::link("Foreign"),
    trivel3::link("Plain"),          trivel3::link("Text"),
};
constexpr PageTable keyed(rows);
constexpr PageTable unkeyed(rows, {}, trivel3::ChoiceRows::all);

class ChoicePage : public trivel3::KavixPreferencesListController {
public:
    using KavixPreferencesListController::KavixPreferencesListController;
    const char* className() const override { return "ChoicePage"; }

    void updateSpecifiers(bool animated) override { updates.push_back(animated); }
    std::vector<bool> updates;

protected:
    const PageTable& pageTable() const override { return keyed; }
    Specifiers buildSpecifiers() override {
        Specifiers built = KavixPreferencesListController::buildSpecifiers();
        built[11]->setUserInfo(platform::Dictionary{{"identifier", "SomebodyElses"}, {"value", 0}});
        built.back()->setUserInfo("no dictionary");
        return built;
    }
};

class UnkeyedChoicePage final : public ChoicePage {
public:
    using ChoicePage::ChoicePage;

protected:
    const PageTable& pageTable() const override { return unkeyed; }
};

class ChoiceRows : public testing::Test {
protected:
    ChoiceRows() {
        pane.addClass<ChoicePage>("ChoicePage");
        pane.addClass<UnkeyedChoicePage>("UnkeyedChoicePage");
    }

    void open(std::string_view className = "ChoicePage") {
        pane.openQuietly(className);
        pane.screen.pageAs<ChoicePage>().updates.clear();
        pane.phone.takeReads(settingsFile);
    }

    /// Marks the row's cell, so that a later `setChecked:` of the page shows.
    bool leavesTheCellAlone(std::string_view label) {
        auto cell = pane.screen.cell(label);
        const bool before = cell->isChecked();
        cell->setChecked(!before);
        return pane.screen.cell(label)->isChecked() != before;
    }

    Pane pane;
};

TEST_F(ChoiceRows, areListItemsThatKeepKeyAndValueInTheirUserInfo) {
    open();
    const PSSpecifier& row = *pane.screen.row("Three");
    EXPECT_EQ(row.cellType(), platform::PSCellType::listItem);
    EXPECT_EQ(row.target(), &pane.screen.page());
    EXPECT_FALSE(row.setter());
    EXPECT_FALSE(row.getter());
    EXPECT_EQ(row.identifier(), std::nullopt);
    EXPECT_THAT(row.detailControllerClass(), IsEmpty());
    EXPECT_EQ(row.userInfo(), platform::Value(platform::Dictionary{{"identifier", singleKey}, {"value", 3}}));
}

TEST_F(ChoiceRows, showTheDefaultsWithoutAFile) {
    open();
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Three", "Second flag", "Third flag", "Unknown 0"));
}

TEST_F(ChoiceRows, showAChangeMadeElsewhereAtTheNextRedraw) {
    open();
    auto kept = pane.screen.cell("One");
    EXPECT_FALSE(kept->isChecked());
    pane.setFile({{singleKey, 1}});
    pane.screen.cell("One");
    EXPECT_TRUE(kept->isChecked());
    EXPECT_FALSE(pane.screen.isChecked("Three"));
}

TEST_F(ChoiceRows, writeTheRowsValueAndRedrawTheWholeGroup) {
    open();
    pane.screen.tap("One");
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), event::reload("Single", 0, withAnimation),
                            event::reload("One", 1, withAnimation), event::reload("Three", 2, withAnimation)));
    EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{singleKey, 1}}));
    EXPECT_THAT(pane.screen.checkedLabels(0), ElementsAre("One"));
}

TEST_F(ChoiceRows, passTheTapToTheFrameworkFirst) {
    open();
    pane.screen.row("One")->action = [this](PSSpecifier&) { pane.log.add(event::notification("framework")); };
    pane.screen.tap("One");
    EXPECT_THAT(pane.log.take(), ElementsAre(event::notification("framework"), settingsWritten(), settingsChanged(),
                                             testing::_, testing::_, testing::_));
}

TEST_F(ChoiceRows, updateThePageOnlyWhereTheTableSaysSo) {
    open();
    pane.screen.tap("One");
    EXPECT_THAT(pane.screen.pageAs<ChoicePage>().updates, ElementsAre(true));
    pane.screen.tap("First flag");
    EXPECT_THAT(pane.screen.pageAs<ChoicePage>().updates, ElementsAre(true));
}

TEST_F(ChoiceRows, writeNothingWhenTheCheckedRowOfASingleValueIsTapped) {
    open();
    pane.screen.tap("Three");
    EXPECT_THAT(pane.log.take(), IsEmpty());
    EXPECT_EQ(pane.file(), std::nullopt);
    EXPECT_THAT(pane.screen.pageAs<ChoicePage>().updates, IsEmpty());
}

TEST_F(ChoiceRows, keepWhatElseTheFileHolds) {
    pane.setFile({{"HotCorners", false}, {"Unknown", platform::Array{1, "two"}}, {singleKey, 3}});
    open();
    pane.screen.tap("One");
    EXPECT_EQ(pane.fileValue(),
              (platform::Dictionary{{"HotCorners", false}, {"Unknown", platform::Array{1, "two"}}, {singleKey, 1}}));
}

TEST_F(ChoiceRows, toggleTheirFlag) {
    open();
    pane.screen.tap("Second flag");
    EXPECT_EQ(pane.stored(flagKey), platform::Value(4));
    pane.screen.tap("Second flag");
    EXPECT_EQ(pane.stored(flagKey), platform::Value(6));
}

TEST_F(ChoiceRows, storeNoFlagsAsZero) {
    pane.setFile({{flagKey, 4}});
    open();
    pane.screen.tap("Third flag");
    EXPECT_EQ(pane.stored(flagKey), platform::Value(0));
    EXPECT_THAT(pane.screen.checkedLabels(1), IsEmpty());
}

TEST_F(ChoiceRows, clearAllFlagsByARowOfValueZeroThatIsNeverChecked) {
    open();
    EXPECT_FALSE(pane.screen.isChecked("No flag"));
    pane.screen.tap("No flag");
    EXPECT_EQ(pane.stored(flagKey), platform::Value(0));
    EXPECT_FALSE(pane.screen.isChecked("No flag"));
}

TEST_F(ChoiceRows, leaveTheWholeGroupUncheckedForAValueWithoutARow) {
    pane.setFile({{singleKey, 2}});
    open();
    EXPECT_THAT(pane.screen.checkedLabels(0), IsEmpty());
    pane.screen.tap("Three");
    EXPECT_EQ(pane.stored(singleKey), platform::Value(3));
}

TEST_F(ChoiceRows, readAKeyOutsideTheCatalogueAsZero) {
    open();
    EXPECT_TRUE(pane.screen.isChecked("Unknown 0"));
    pane.screen.tap("Unknown 0");
    EXPECT_THAT(pane.log.take(), IsEmpty());
    pane.screen.tap("Unknown 1");
    EXPECT_EQ(pane.stored(unknownKey), platform::Value(1));
}

TEST_F(ChoiceRows, areNotMadeOfRowsWithoutOneOfThePagesKeys) {
    open();
    for (const char* label : {"Foreign", "Plain", "Text"}) {
        EXPECT_TRUE(leavesTheCellAlone(label)) << label;
        pane.screen.tap(label);
        EXPECT_THAT(pane.log.take(), IsEmpty()) << label;
    }
    EXPECT_EQ(pane.phone.takeReads(settingsFile), 0u);
}

TEST_F(ChoiceRows, areMadeOfEveryRowWhereThePageAsksForNoKey) {
    open("UnkeyedChoicePage");
    EXPECT_FALSE(leavesTheCellAlone("Foreign"));
    for (const char* label : {"Plain", "Text"}) {
        EXPECT_TRUE(pane.screen.isChecked(label)) << label;
        EXPECT_FALSE(leavesTheCellAlone(label)) << label;
        pane.screen.tap(label);
        EXPECT_THAT(pane.log.take(), IsEmpty()) << label;
    }
}

TEST_F(ChoiceRows, tellAndRedrawEvenWhenTheWriteFailed) {
    open();
    pane.phone.setWritesFail(true);
    pane.screen.tap("One");
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsNotWritten(), settingsChanged(), event::reload("Single", 0, withAnimation),
                            event::reload("One", 1, withAnimation), event::reload("Three", 2, withAnimation)));
    EXPECT_THAT(pane.screen.pageAs<ChoicePage>().updates, ElementsAre(true));
    EXPECT_THAT(pane.screen.checkedLabels(0), ElementsAre("Three"));
}

TEST_F(ChoiceRows, readTheFileOnceForACellAndOnceForATap) {
    open();
    pane.screen.cell("One");
    EXPECT_EQ(pane.phone.takeReads(settingsFile), 1u);
    pane.screen.cell("One");
    EXPECT_EQ(pane.phone.takeReads(settingsFile), 1u);
    pane.screen.tap("Three");
    EXPECT_EQ(pane.phone.takeReads(settingsFile), 1u);
    pane.screen.tap("One");
    EXPECT_EQ(pane.phone.takeReads(settingsFile), 2u) << "once for the tap and once for the write";
}

TEST_F(ChoiceRows, storeAnIntegerWhateverTheFileHeld) {
    for (const platform::Value& held : {platform::Value(5.75), platform::Value(true), platform::Value("5"),
                                        platform::Value(platform::Data()), platform::Value(UINT64_MAX)}) {
        pane.setFile({{singleKey, held}, {flagKey, held}});
        open();
        pane.screen.tap("Three");
        EXPECT_EQ(pane.stored(singleKey), platform::Value(3)) << held;
        pane.screen.tap("Third flag");
        ASSERT_TRUE(pane.stored(flagKey)) << held;
        EXPECT_TRUE(pane.stored(flagKey)->integer()) << held;
    }
}

TEST_F(ChoiceRows, compareInTheMachinesWord) {
    pane.setFile({{singleKey, (std::int64_t{1} << 32) + 1}});
    open();
    EXPECT_THAT(pane.screen.checkedLabels(0), IsEmpty());
}

TEST(ChoiceModes, sayWhatIsChecked) {
    struct Case {
        ChoiceMode mode;
        std::int64_t current;
        std::int64_t value;
        bool checked;
    };
    const Case cases[] = {
        {ChoiceMode::singleValue, 3, 3, true},       {ChoiceMode::singleValue, 3, 1, false},
        {ChoiceMode::singleValue, 0, 0, true},       {ChoiceMode::flagSet, 6, 2, true},
        {ChoiceMode::flagSet, 6, 1, false},          {ChoiceMode::flagSet, 0, 0, false},
        {ChoiceMode::flagSet, 7, 0, false},          {ChoiceMode::flagSet, -1, 4, true},
        {ChoiceMode::flagSetWithNone, 0, 0, true},   {ChoiceMode::flagSetWithNone, 4, 0, false},
        {ChoiceMode::flagSetWithNone, 5, 4, true},   {ChoiceMode::flagSetWithNone, -8, 0, false},
        {ChoiceMode::flagSetWithNone, -8, 4, false}, {ChoiceMode::flagSetWithNone, INT64_MIN, 1, false},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(trivel3::isChoiceChecked(each.mode, each.current, each.value), each.checked)
            << each.current << " against " << each.value;
    }
}

TEST(ChoiceModes, sayWhatATapMakesOfTheSetting) {
    struct Case {
        ChoiceMode mode;
        std::int64_t current;
        std::int64_t value;
        std::int64_t after;
    };
    const Case cases[] = {
        {ChoiceMode::singleValue, 3, 1, 1},     {ChoiceMode::singleValue, 3, 0, 0},
        {ChoiceMode::flagSet, 6, 2, 4},         {ChoiceMode::flagSet, 4, 2, 6},
        {ChoiceMode::flagSet, 6, 0, 0},         {ChoiceMode::flagSet, -1, 1, -2},
        {ChoiceMode::flagSet, 8, 1, 9},         {ChoiceMode::flagSet, 2, 3, 0},
        {ChoiceMode::flagSetWithNone, 5, 0, 0}, {ChoiceMode::flagSetWithNone, 0, 0, 0},
        {ChoiceMode::flagSetWithNone, 4, 4, 0}, {ChoiceMode::flagSetWithNone, INT64_MIN, 4, INT64_MIN + 4},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(trivel3::settingAfterChoice(each.mode, each.current, each.value), each.after)
            << each.current << " with " << each.value;
    }
}

}  // namespace
}  // namespace choice_rows_test
}  // namespace pages_test
