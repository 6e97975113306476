// SPDX-License-Identifier: MIT
#include "store/settings_catalogue.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/kit/print.h"

namespace store_test {
namespace {

using platform::Value;
using trivel3::SettingsCatalogue;
using Kind = SettingsCatalogue::Kind;

struct ExpectedEntry {
    const char* key;
    Kind kind;
    Value defaultValue;
};

const ExpectedEntry expectedEntries[] = {
    {"MultiCenter", Kind::boolean, true},
    {"QuickSwitcher", Kind::boolean, true},
    {"HotCorners", Kind::boolean, true},
    {"ReachabilityMode", Kind::boolean, true},
    {"MinimalControlCenterEnabled", Kind::boolean, true},
    {"MinimalControlCenterCondition", Kind::integer, 1},
    {"OpenToLastApp", Kind::boolean, false},
    {"QuickLauncherNotPlaying", Kind::integer, 0},
    {"QuickLauncherIsPlaying", Kind::integer, 0},
    {"QuickLauncherAutoDismissDelay", Kind::integer, 3},
    {"SliderActionsBrightness", Kind::integer, 2},
    {"SliderActionsVolume", Kind::integer, 2},
    {"SliderActionsDisableHUD", Kind::boolean, false},
    {"AlbumArtworkAutoDisplay", Kind::integer, 6},
    {"AlbumArtworkAutoDismissDelay", Kind::integer, 1},
    {"CloseAllAppsNoConfirmation", Kind::boolean, false},
    {"CloseAllAppsBackToHomeScreen", Kind::boolean, false},
    {"CloseAllAppsExcludeNowPlaying", Kind::boolean, true},
    {"CloseAllAppsExceptions", Kind::dictionary, platform::Dictionary()},
    {"UnlimitedQuickSwitcher", Kind::boolean, false},
    {"AccessHomeScreen", Kind::boolean, false},
    {"AccessAppSwitcher", Kind::boolean, false},
    {"InvertHotCorners", Kind::boolean, false},
    {"PeopleInToday", Kind::boolean, false},
    {"DisableHomeDoubleClick", Kind::boolean, false},
    {"DisableWithKeyboard", Kind::boolean, false},
};

TEST(SettingsCatalogue, holdsTwentySixKeysInTheirOrder) {
    const auto entries = SettingsCatalogue::entries();
    ASSERT_EQ(entries.size(), 26u);
    ASSERT_EQ(entries.size(), std::size(expectedEntries));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].key, expectedEntries[i].key);
        EXPECT_EQ(entries[i].kind, expectedEntries[i].kind) << entries[i].key;
        EXPECT_EQ(entries[i].defaultValue(), expectedEntries[i].defaultValue) << entries[i].key;
    }
}

TEST(SettingsCatalogue, givesEachDefaultInItsOwnKind) {
    for (const ExpectedEntry& entry : expectedEntries) {
        const auto found = SettingsCatalogue::defaultForKey(entry.key);
        ASSERT_TRUE(found) << entry.key;
        EXPECT_EQ(*found, entry.defaultValue) << entry.key;
        EXPECT_EQ(found->boolean() != nullptr, entry.kind == Kind::boolean) << entry.key;
        EXPECT_EQ(found->integer() != nullptr, entry.kind == Kind::integer) << entry.key;
        EXPECT_EQ(found->dictionary() != nullptr, entry.kind == Kind::dictionary) << entry.key;
    }
}

TEST(SettingsCatalogue, givesNothingForAnyOtherKey) {
    for (const char* key : {"OpenToLastAppWithQS", "multicenter", "MULTICENTER", "MultiCente", "MultiCenter ", ""}) {
        EXPECT_EQ(SettingsCatalogue::defaultForKey(key), std::nullopt) << key;
    }
    EXPECT_EQ(SettingsCatalogue::defaultForKey(std::string_view("MultiCenter\0", 12)), std::nullopt);
}

TEST(SettingsCatalogue, makesEachDefaultAnew) {
    const auto first = SettingsCatalogue::defaultForKey("CloseAllAppsExceptions");
    const auto second = SettingsCatalogue::defaultForKey("CloseAllAppsExceptions");
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->dictionary(), second->dictionary());
}

}  // namespace
}  // namespace store_test
