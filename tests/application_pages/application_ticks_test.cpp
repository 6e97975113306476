// SPDX-License-Identifier: MIT
// Ticking applications, as it goes on both pages.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>

#include "pane.h"
#include "platform/foundation/property_list.h"

namespace application_pages_test {
namespace {

using kit::event::notification;
using kit::event::write;
using platform::Dictionary;
using platform::Value;
using testing::ElementsAre;
using testing::IsEmpty;

class ApplicationTicks : public testing::TestWithParam<TickPage> {
protected:
    void setTicks(Dictionary ticks) { pane.setTicks(GetParam(), std::move(ticks)); }
    Value ticks() const { return pane.ticks(GetParam()); }
    void open() { pane.openQuietly(GetParam().className); }
    kit::Event written(bool worked = true) const { return write(std::string(GetParam().file), worked); }
    kit::Event posted() const { return notification(std::string(GetParam().notification)); }

    PaneWithApplications pane;
};

INSTANTIATE_TEST_SUITE_P(OnBothPages, ApplicationTicks, testing::Values(closeAllApps, exceptions));

TEST_P(ApplicationTicks, areNoneWithoutAFile) {
    open();
    EXPECT_THAT(pane.screen.checkedLabels(), IsEmpty());
    EXPECT_EQ(pane.phone.bytes(GetParam().file), std::nullopt);
    EXPECT_THAT(pane.log.take(), IsEmpty());
}

TEST_P(ApplicationTicks, showWhereTheFileSaysTrue) {
    setTicks({{"com.apple.maps", true}, {"com.example.tides", false}, {"com.example.zither", true}});
    open();
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Maps", "Zither"));
}

TEST_P(ApplicationTicks, storeTrueUnderTheIdentifierAndNothingElse) {
    open();
    pane.screen.tap("Tides");
    EXPECT_EQ(ticks(), Value(only(tidesIdentifier, true)));
    EXPECT_EQ(pane.content(GetParam().file).dictionary()->size(), 1U);
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Tides"));
}

TEST_P(ApplicationTicks, storeFalseWhenTakenAwayAndKeepTheKey) {
    open();
    pane.screen.tap("Tides");
    pane.screen.tap("Tides");
    EXPECT_EQ(ticks(), Value(only(tidesIdentifier, false)));
    EXPECT_THAT(pane.screen.checkedLabels(), IsEmpty());
}

TEST_P(ApplicationTicks, areIndependentOfEachOther) {
    open();
    pane.screen.tap("Tides");
    pane.screen.tap("Clock");
    pane.screen.tap("Maps");
    pane.screen.tap("Tides");
    EXPECT_EQ(ticks(),
              Value(Dictionary{{"com.apple.clock", true}, {"com.apple.maps", true}, {"com.example.tides", false}}));
}

TEST_P(ApplicationTicks, writeAndThenTellAndNothingElse) {
    open();
    pane.screen.tap("Tides");
    EXPECT_THAT(pane.log.take(), ElementsAre(written(), posted()));
    pane.screen.tap("Tides");
    EXPECT_THAT(pane.log.take(), ElementsAre(written(), posted()));
}

TEST_P(ApplicationTicks, passTheTapToTheFrameworkFirst) {
    open();
    pane.screen.row("Tides")->action = [this](platform::PSSpecifier&) { pane.log.add(notification("framework")); };
    pane.screen.tap("Tides");
    EXPECT_THAT(pane.log.take(), ElementsAre(notification("framework"), written(), posted()));
}

TEST_P(ApplicationTicks, leaveEveryOtherEntryAsItWas) {
    const Dictionary before = {{"com.gone.away", true}, {"com.gone.other", false}, {"com.odd", "text"},
                               {"com.number", 3},       {"&<>\"'", true},          {"", true}};
    setTicks(before);
    open();
    pane.screen.tap("Tides");
    Dictionary after = before;
    after.set(tidesIdentifier, true);
    EXPECT_EQ(ticks(), Value(after));
}

TEST_P(ApplicationTicks, areReadAnewForEachCell) {
    open();
    EXPECT_FALSE(pane.screen.isChecked("Tides"));
    setTicks(only(tidesIdentifier, true));
    EXPECT_TRUE(pane.screen.isChecked("Tides"));
    setTicks(only(tidesIdentifier, false));
    EXPECT_FALSE(pane.screen.isChecked("Tides"));
}

TEST_P(ApplicationTicks, costOneReadingOfTheFileForEachCell) {
    setTicks(only(tidesIdentifier, true));
    open();
    pane.phone.takeReads(GetParam().file);
    pane.screen.cell("Tides");
    EXPECT_EQ(pane.phone.takeReads(GetParam().file), 1U);
}

TEST_P(ApplicationTicks, showAtOnceOnTheCellThatIsOnTheScreen) {
    open();
    const auto cell = pane.screen.cell("Tides");
    pane.screen.tap("Tides");
    EXPECT_TRUE(cell->isChecked());
    pane.screen.tap("Tides");
    EXPECT_FALSE(cell->isChecked());
}

TEST_P(ApplicationTicks, startFromTheFileAndNotFromAnOldCell) {
    open();
    const auto cell = pane.screen.cell("Tides");
    setTicks(only(tidesIdentifier, true));
    pane.screen.tap("Tides");
    EXPECT_EQ(ticks(), Value(only(tidesIdentifier, false)));
    EXPECT_FALSE(cell->isChecked());
}

TEST_P(ApplicationTicks, keepWhatAnotherProcessHasStoredMeanwhile) {
    open();
    pane.screen.tap("Tides");
    setTicks({{"com.example.tides", true}, {"com.other", true}});
    pane.screen.tap("Clock");
    EXPECT_EQ(ticks(), Value(Dictionary{{"com.apple.clock", true}, {"com.example.tides", true}, {"com.other", true}}));
}

TEST_P(ApplicationTicks, tellOfAFailedWriteTooAndShowWhatIsStored) {
    setTicks(only(tidesIdentifier, false));
    open();
    pane.phone.setWritesFail(true);
    pane.screen.tap("Tides");
    EXPECT_THAT(pane.log.take(), ElementsAre(written(false), posted()));
    EXPECT_EQ(ticks(), Value(only(tidesIdentifier, false)));
    EXPECT_FALSE(pane.screen.isChecked("Tides"));
}

TEST_P(ApplicationTicks, countByTruthValueAndBecomeBooleansWithTheNextTap) {
    struct Case {
        Value stored;
        bool ticked;
    };
    const Case cases[] = {
        {1, true},
        {0, false},
        {-3, true},
        {2.5, true},
        {0.0, false},
        {"YES", true},
        {"no", false},
        {"", false},
        {platform::Date{5}, false},
        {platform::Array{1}, false},
        {Dictionary{{"a", true}}, false},
        {platform::Data{std::byte{1}}, false},
    };
    for (const Case& one : cases) {
        setTicks(only(tidesIdentifier, one.stored));
        open();
        EXPECT_EQ(pane.screen.isChecked("Tides"), one.ticked) << one.stored;
        pane.screen.tap("Tides");
        EXPECT_EQ(ticks(), Value(only(tidesIdentifier, !one.ticked))) << one.stored;
    }
}

TEST_P(ApplicationTicks, areReadFromABinaryFileAndKeptInTheNewOne) {
    setTicks({{"com.example.tides", true}, {"com.other", true}});
    const Value whole = pane.content(GetParam().file);
    pane.phone.put(GetParam().file, std::string_view(*platform::writeBinaryPropertyList(whole).bytes));
    open();
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Tides"));
    pane.screen.tap("Clock");
    EXPECT_EQ(ticks(), Value(Dictionary{{"com.apple.clock", true}, {"com.example.tides", true}, {"com.other", true}}));
    EXPECT_TRUE(pane.phone.bytes(GetParam().file)->starts_with("<?xml"));
}

TEST_P(ApplicationTicks, startAnewInPlaceOfAFileThatIsNoDictionary) {
    for (const std::string_view damaged :
         {"", "garbage", "<plist><array><true/></array></plist>", "<plist><dict><key>com.example.tides</key><true/>"}) {
        pane.phone.put(GetParam().file, damaged);
        open();
        EXPECT_THAT(pane.screen.checkedLabels(), IsEmpty()) << damaged;
        EXPECT_EQ(pane.phone.bytes(GetParam().file), damaged) << "showing changes nothing";
        pane.screen.tap("Tides");
        EXPECT_EQ(ticks(), Value(only(tidesIdentifier, true))) << damaged;
    }
}

TEST_P(ApplicationTicks, areKeptForIdentifiersOfEveryScript) {
    app_list_test::install(pane.phone, "/Applications/Odd.app", app_list_test::info("é.日本.&<>\"'🌊", "Odd"));
    open();
    pane.screen.tap("Odd");
    EXPECT_EQ(ticks(), Value(only("é.日本.&<>\"'🌊", true)));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Odd"));
}

TEST_P(ApplicationTicks, ofTheOtherPageStayAsTheyAre) {
    pane.setTicks(closeAllApps, only(clockIdentifier, true));
    pane.setTicks(exceptions, only(mapsIdentifier, true));
    const bool isCloseAllApps = GetParam().className == closeAllAppsPage;
    const TickPage& other = isCloseAllApps ? exceptions : closeAllApps;
    const auto before = pane.phone.bytes(other.file);
    open();
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre(isCloseAllApps ? "Clock" : "Maps"));
    pane.screen.tap("Tides");
    EXPECT_EQ(pane.phone.bytes(other.file), before);
}

TEST_P(ApplicationTicks, ofTenThousandApplicationsAreEachFound) {
    Dictionary all;
    std::vector<Dictionary::Entry> entries;
    for (int number = 0; number < 10'000; ++number)
        entries.push_back({"com.example.application" + std::to_string(number), number % 2 == 0});
    entries.push_back({std::string(zitherIdentifier), true});
    setTicks(Dictionary(std::move(entries), Dictionary::Duplicates::lastWins));
    open();
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Zither"));
    pane.screen.tap("Tides");
    EXPECT_EQ(ticks().dictionary()->size(), 10'002U);
}

}  // namespace
}  // namespace application_pages_test
