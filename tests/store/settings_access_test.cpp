// SPDX-License-Identifier: MIT
#include "store/settings_access.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>

#include "store/settings_catalogue.h"
#include "tests/kit/print.h"
#include "tests/kit/test_platform.h"

namespace store_test {
namespace {

using platform::Value;
using trivel3::KavixPreferencesSettingsAccess;

class SettingsAccess : public testing::Test {
protected:
    kit::TestPlatform host;
    KavixPreferencesSettingsAccess access{host.services()};
};

TEST_F(SettingsAccess, listsTheCatalogueAsItIs) {
    const auto settings = access.settings();
    const std::span entries = trivel3::SettingsCatalogue::entries;
    ASSERT_EQ(settings.size(), entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(settings[i].key, entries[i].key);
        EXPECT_EQ(settings[i].kind, entries[i].kind) << settings[i].key;
        EXPECT_EQ(settings[i].defaultValue, entries[i].defaultValue()) << settings[i].key;
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
