// SPDX-License-Identifier: MIT
#include "store/settings_catalogue.h"

#include <gtest/gtest.h>

#include <span>

#include "tests/kit/page_tables.h"
#include "tests/kit/print.h"

namespace store_test {
namespace {

using platform::Value;
using trivel3::SettingsCatalogue;
using Kind = SettingsCatalogue::Kind;

bool isOfKind(const Value& value, Kind kind) {
    return (value.boolean() != nullptr) == (kind == Kind::boolean) &&
           (value.integer() != nullptr) == (kind == Kind::integer) &&
           (value.dictionary() != nullptr) == (kind == Kind::dictionary);
}

TEST(SettingsCatalogue, holdsTheSettingsInTheirOrderAndLastTheOneWithoutADefault) {
    const auto expected = kit::expectedSettings();
    const std::span entries = SettingsCatalogue::entries;
    ASSERT_EQ(entries.size(), expected.size() + 1);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(entries[i].key, expected[i].key);
        EXPECT_EQ(entries[i].defaultValue(), expected[i].defaultValue) << expected[i].key;
        EXPECT_EQ(SettingsCatalogue::defaultForKey(expected[i].key), expected[i].defaultValue) << expected[i].key;
        EXPECT_TRUE(isOfKind(expected[i].defaultValue, entries[i].kind)) << expected[i].key;
    }
    EXPECT_EQ(entries.back().key, kit::settingWithoutDefault);
    EXPECT_EQ(entries.back().kind, Kind::boolean);
    EXPECT_EQ(entries.back().defaultValue(), std::nullopt);
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
