// SPDX-License-Identifier: MIT
// Settings that hold what they never should: another program, an older version or a hand has been at
// the file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <span>

#include "pane.h"
#include "platform/foundation/property_list.h"
#include "store/settings_catalogue.h"

namespace pages_test {
namespace {

struct OddValue {
    const char* name;
    platform::Value value;
    bool truth;
    std::int64_t integer;
};

platform::Data someBytes() {
    return {std::byte{0x31}, std::byte{0x32}};
}

std::vector<OddValue> oddValues() {
    return {
        {"false", false, false, 0},
        {"true", true, true, 1},
        {"zero", 0, false, 0},
        {"seven", 7, true, 7},
        {"minus one", -1, true, -1},
        {"least integer", INT64_MIN, true, INT64_MIN},
        {"greatest integer", INT64_MAX, true, INT64_MAX},
        {"greatest unsigned", UINT64_MAX, true, -1},
        {"zero real", 0.0, false, 0},
        {"half", 0.5, true, 0},
        {"real", 2.9, true, 2},
        {"negative real", -4.5, true, -4},
        {"huge real", 1e300, true, INT64_MAX},
        {"infinity", -INFINITY, true, INT64_MIN},
        {"not a number", NAN, true, 0},
        {"empty string", "", false, 0},
        {"word", "abc", false, 0},
        {"yes", "YES", true, 0},
        {"no", "NO", false, 0},
        {"digits", "4", true, 4},
        {"blank and digits", "  12 monkeys", true, 12},
        {"huge digits", "99999999999999999999", true, INT64_MAX},
        {"date", platform::Date{12345}, false, 0},
        {"data", someBytes(), false, 0},
        {"array", platform::Array{1, 2}, false, 0},
        {"dictionary", platform::Dictionary{{"a", 1}}, false, 0},
        {"set", platform::Set{{platform::Value(1)}}, false, 0},
        {"null", platform::Null(), false, 0},
        {"uid", platform::Uid{3}, false, 0},
    };
}

/// A binary file, which can hold every kind.
void putBinary(Pane& pane, const platform::Dictionary& settings) {
    pane.phone.put(settingsFile, std::string_view(platform::writeBinaryPropertyList(settings).bytes.value()));
}

std::vector<std::shared_ptr<platform::PSTableCell>> allCells(const Pane& pane) {
    std::vector<std::shared_ptr<platform::PSTableCell>> cells;
    for (std::size_t section = 0; section < pane.screen.headers().size(); ++section) {
        for (std::size_t row = 0; row < pane.screen.labels(section).size(); ++row) {
            cells.push_back(pane.screen.cell(platform::NSIndexPath{section, row}));
        }
    }
    return cells;
}

struct SwitchRow {
    std::string_view page;
    const char* key;
    const char* label;
};

constexpr SwitchRow switchRows[] = {
    {rootPage, "MultiCenter", "Multi-Center"},
    {rootPage, "QuickSwitcher", "Quick Switcher"},
    {rootPage, "HotCorners", "Hot Corners"},
    {optionsPage, "ReachabilityMode", "Reachable Display"},
    {optionsPage, "MinimalControlCenterEnabled", "Minimal Display"},
    {optionsPage, "OpenToLastApp", "Open to Last App"},
    {optionsPage, "OpenToLastAppWithQS", "Apply to Quick Switcher"},
    {optionsPage, "UnlimitedQuickSwitcher", "Unlimited Quick Switcher"},
    {optionsPage, "AccessHomeScreen", "Access Home Screen"},
    {optionsPage, "InvertHotCorners", "Invert Hot Corners"},
    {optionsPage, "PeopleInToday", "Move Recent Contacts to NC"},
    {optionsPage, "DisableHomeDoubleClick", "Disable Double-Click Home"},
    {sliderActionsPage, "SliderActionsDisableHUD", "Disable Slider HUD"},
};

TEST(WrongKinds, showASwitchByTheirTruthValue) {
    for (const SwitchRow& row : switchRows) {
        for (const OddValue& odd : oddValues()) {
            SCOPED_TRACE(testing::Message() << row.key << " holds " << odd.name);
            Pane pane;
            platform::Dictionary settings{{"OpenToLastApp", true}};
            settings.set(row.key, odd.value);
            putBinary(pane, settings);
            pane.openQuietly(row.page);
            EXPECT_EQ(pane.screen.isOn(row.label), odd.truth);
            EXPECT_TRUE(pane.screen.moveSwitch(row.label, !odd.truth));
            EXPECT_EQ(pane.stored(row.key), platform::Value(!odd.truth));
        }
    }
}

TEST(WrongKinds, greyAndHideByTheirTruthValue) {
    for (const OddValue& odd : oddValues()) {
        SCOPED_TRACE(odd.name);
        Pane pane;
        putBinary(pane, {{"MultiCenter", odd.value}, {"ReachabilityMode", false}, {"OpenToLastApp", odd.value}});
        pane.openQuietly(optionsPage);
        EXPECT_EQ(pane.screen.isGreyed("Album Artwork"), !odd.truth);
        EXPECT_EQ(std::ranges::count(pane.screen.labels(), "Apply to Quick Switcher"), odd.truth);
    }
}

struct ChoiceKey {
    std::string_view page;
    const char* key;
};

constexpr ChoiceKey singleValueKeys[] = {
    {quickLauncherPage, "QuickLauncherNotPlaying"},       {quickLauncherPage, "QuickLauncherIsPlaying"},
    {quickLauncherPage, "QuickLauncherAutoDismissDelay"}, {sliderActionsPage, "SliderActionsBrightness"},
    {sliderActionsPage, "SliderActionsVolume"},           {albumArtworkPage, "AlbumArtworkAutoDismissDelay"},
};

constexpr ChoiceKey flagKeys[] = {
    {albumArtworkPage, "AlbumArtworkAutoDisplay"},
    {optionsPage, "MinimalControlCenterCondition"},
};

/// With the key set, and the rest so that every choice row can be seen and tapped.
platform::Dictionary settingsWith(std::string_view key, const platform::Value& value) {
    platform::Dictionary settings{
        {"ReachabilityMode", false}, {"QuickLauncherIsPlaying", 2}, {"QuickLauncherNotPlaying", 2}};
    settings.set(key, value);
    return settings;
}

struct ChoiceRowOnPage {
    platform::NSIndexPath path;
    std::int64_t value;
};

std::vector<ChoiceRowOnPage> rowsOfKey(const Pane& pane, std::string_view key) {
    std::vector<ChoiceRowOnPage> rows;
    platform::PSListController& page = pane.screen.page();
    for (std::size_t position = 0; position < page.specifiers().size(); ++position) {
        const auto& info = page.specifiers()[position]->userInfo();
        if (!info || *info->dictionary()->find("identifier")->string() != key) continue;
        rows.push_back({*page.indexPathForIndex(position), platform::integerValue(*info->dictionary()->find("value"))});
    }
    return rows;
}

/// Opens the page of each key with each odd value under it.
template <class Check>
void withEachOddChoice(std::span<const ChoiceKey> choices, Check check) {
    for (const ChoiceKey& choice : choices) {
        for (const OddValue& odd : oddValues()) {
            SCOPED_TRACE(testing::Message() << choice.key << " holds " << odd.name);
            Pane pane;
            putBinary(pane, settingsWith(choice.key, odd.value));
            pane.openQuietly(choice.page);
            check(pane, choice, odd);
        }
    }
}

TEST(WrongKinds, checkASingleChoiceByTheirIntegerValue) {
    withEachOddChoice(singleValueKeys, [](const Pane& pane, const ChoiceKey& choice, const OddValue& odd) {
        const auto rows = rowsOfKey(pane, choice.key);
        EXPECT_GE(rows.size(), 3u);
        for (const auto& [path, value] : rows) {
            EXPECT_EQ(pane.screen.cell(path)->isChecked(), value == odd.integer) << value;
        }
    });
}

TEST(WrongKinds, areReplacedByTheIntegerOfTheTappedRow) {
    withEachOddChoice(singleValueKeys, [](Pane& pane, const ChoiceKey& choice, const OddValue& odd) {
        const auto [path, value] = rowsOfKey(pane, choice.key).front();
        pane.screen.tap(path);
        EXPECT_EQ(pane.stored(choice.key), value == odd.integer ? odd.value : platform::Value(value));
    });
}

TEST(WrongKinds, checkAFlagByTheirBits) {
    withEachOddChoice(flagKeys, [](const Pane& pane, const ChoiceKey& choice, const OddValue& odd) {
        const auto rows = rowsOfKey(pane, choice.key);
        EXPECT_GE(rows.size(), 3u);
        for (const auto& [path, value] : rows) {
            const bool checked = value == 0 ? odd.integer == 0 : (odd.integer & value) != 0;
            EXPECT_EQ(pane.screen.cell(path)->isChecked(), checked) << value;
        }
    });
}

TEST(WrongKinds, areReplacedByAnIntegerWhenAFlagIsTapped) {
    withEachOddChoice(flagKeys, [](Pane& pane, const ChoiceKey& choice, const OddValue& odd) {
        const auto [path, value] = rowsOfKey(pane, choice.key).back();
        EXPECT_EQ(value, 4);
        pane.screen.tap(path);
        EXPECT_EQ(pane.stored(choice.key), platform::Value(odd.integer ^ 4));
    });
}

TEST(WrongKinds, areRepairedToAnInteger) {
    for (const OddValue& odd : oddValues()) {
        SCOPED_TRACE(odd.name);
        Pane pane;
        putBinary(pane, {{"MinimalControlCenterCondition", odd.value}});
        pane.openQuietly(optionsPage);
        EXPECT_EQ(pane.stored("MinimalControlCenterCondition"), platform::Value(odd.integer & ~std::int64_t{6}));
    }
}

TEST(WrongKinds, hideTheDelaysByTheirIntegerValue) {
    for (const OddValue& odd : oddValues()) {
        SCOPED_TRACE(odd.name);
        Pane pane;
        putBinary(pane, {{"AlbumArtworkAutoDisplay", odd.value}, {"QuickLauncherIsPlaying", odd.value}});
        pane.openQuietly(albumArtworkPage);
        EXPECT_EQ(pane.screen.headers().size(), odd.integer >= 1 ? 2u : 1u);
        pane.openQuietly(quickLauncherPage);
        EXPECT_EQ(pane.screen.headers().size(), odd.integer == 2 ? 3u : 2u);
    }
}

TEST(WrongKinds, doNoHarmInAllKeysAtOnce) {
    for (const OddValue& odd : oddValues()) {
        SCOPED_TRACE(odd.name);
        Pane pane;
        platform::Dictionary settings;
        for (const auto& entry : trivel3::SettingsCatalogue::entries)
            settings.set(entry.key, odd.value);
        putBinary(pane, settings);
        for (const auto page : {rootPage, optionsPage, quickLauncherPage, sliderActionsPage, albumArtworkPage}) {
            pane.openQuietly(page);
            EXPECT_FALSE(allCells(pane).empty());
        }
    }
}

}  // namespace
}  // namespace pages_test
