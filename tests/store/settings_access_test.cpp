// SPDX-License-Identifier: MIT
#include "store/settings_access.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/settings_catalogue.h"
#include "tests/kit/print.h"
#include "tests/kit/test_platform.h"

namespace store_test {
namespace {

using platform::Value;
using trivel3::KavixPreferencesSettingsAccess;
using trivel3::SettingsCatalogue;
using Kind = platform::PreferenceAccess::Kind;

class SettingsAccess : public testing::Test {
protected:
    kit::TestPlatform host;
    KavixPreferencesSettingsAccess access{host.services()};
};

TEST_F(SettingsAccess, listsTheCatalogueAndThenTheSettingWithoutADefault) {
    const auto settings = access.settings();
    const auto entries = SettingsCatalogue::entries();
    ASSERT_EQ(settings.size(), entries.size() + 1);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(settings[i].key, entries[i].key);
        EXPECT_EQ(settings[i].defaultValue, entries[i].defaultValue()) << settings[i].key;
    }
    EXPECT_EQ(settings.back().key, "OpenToLastAppWithQS");
    EXPECT_EQ(settings.back().kind, Kind::boolean);
    EXPECT_EQ(settings.back().defaultValue, std::nullopt);
}

TEST_F(SettingsAccess, tellsTheKindOfEachSetting) {
    for (const auto& setting : access.settings()) {
        if (!setting.defaultValue) continue;
        EXPECT_EQ(setting.kind == Kind::boolean, setting.defaultValue->boolean() != nullptr) << setting.key;
        EXPECT_EQ(setting.kind == Kind::integer, setting.defaultValue->integer() != nullptr) << setting.key;
        EXPECT_EQ(setting.kind == Kind::dictionary, setting.defaultValue->dictionary() != nullptr) << setting.key;
    }
}

TEST_F(SettingsAccess, readsAndWritesByTheStoresRules) {
    EXPECT_EQ(access.preferenceForKey("HotCorners"), Value(true));
    EXPECT_EQ(access.storedValueForKey("HotCorners"), std::nullopt);
    access.setPreferenceForKey(false, "HotCorners");
    EXPECT_EQ(access.preferenceForKey("HotCorners"), Value(false));
    EXPECT_EQ(access.storedValueForKey("HotCorners"), Value(false));
    EXPECT_THAT(host.log.take(),
                testing::ElementsAre(kit::event::write("/var/mobile/Library/Preferences/com.fenwary.trivel3.plist"),
                                     kit::event::notification("com.fenwary.trivel3.preferencesChanged")));
}

TEST_F(SettingsAccess, namesBothFilesWithTheirNotifications) {
    const auto files = access.observedFiles();
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].path, "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist");
    EXPECT_EQ(files[0].notification, "com.fenwary.trivel3.preferencesChanged");
    EXPECT_EQ(files[1].path, "/var/mobile/Library/Preferences/com.fenwary.trivel3.exceptions.plist");
    EXPECT_EQ(files[1].notification, "com.fenwary.trivel3.exceptionsChanged");
}

}  // namespace
}  // namespace store_test
