// SPDX-License-Identifier: MIT
#include "support/support_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foreign_reader.h"
#include "platform/foundation/property_list.h"
#include "tests/kit/test_platform.h"

namespace trivel3 {
namespace {

using platform::Dictionary;
using platform::Value;
using testing::HasSubstr;
using testing::StartsWith;

constexpr auto settings = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
constexpr auto packageDatabase = "/var/lib/dpkg/status";

const std::string packages =
    "Package: com.fenwary.trivel3\nStatus: install ok installed\nName: Trivel 3\n\n"
    "Package: org.example.stra\xC3\x9F"
    "enbahn\nName: \xF0\x9F\x9A\x8A\n";

class SupportReport : public testing::Test {
protected:
    std::string encoded() { return encodedSupportReport(platform.services()).value(); }

    Dictionary report() {
        const std::string bytes = encoded();
        EXPECT_THAT(bytes, StartsWith("bplist00"));
        const auto reading = platform::readPropertyList(bytes);
        EXPECT_TRUE(reading) << reading.error.reason;
        return *reading.value->dictionary();
    }

    Value entry(std::string_view key) {
        const Dictionary all = report();
        const Value* value = all.find(key);
        EXPECT_TRUE(value) << key << " is not in the report";
        return value ? *value : Value("(missing)");
    }

    void answerAll() {
        platform.deviceQuery.answers = {
            {"UniqueDeviceID", "7c19e05f"},
            {"ProductVersion", "8.1.2"},
            {"ProductType", "iPhone7,2"},
            {"DiskUsage", Dictionary{{"TotalDiskCapacity", std::uint64_t{16000000000}}}},
            {"DeviceColor", "#e1e4e3"},
            {"CPUArchitecture", "arm64"},
        };
        platform.phone.put(packageDatabase, packages);
        platform.phone.put(settings, Dictionary{{"HotCorners", false}});
    }

    kit::TestPlatform platform;
};

TEST_F(SupportReport, holdsEightEntriesWithAnswersAsTheyAre) {
    answerAll();
    const Dictionary expected{
        {"UniqueDeviceID", "7c19e05f"}, {"ProductVersion", "8.1.2"},
        {"ProductType", "iPhone7,2"},   {"DiskUsage", Dictionary{{"TotalDiskCapacity", std::uint64_t{16000000000}}}},
        {"DeviceColor", "#e1e4e3"},     {"CPUArchitecture", "arm64"},
        {"Packages", packages},         {"Preferences", Dictionary{{"HotCorners", false}}},
    };
    EXPECT_EQ(Value(report()), Value(expected));
}

TEST_F(SupportReport, holdsTheNullObjectForEveryMissingAnswer) {
    const Dictionary empty = report();
    EXPECT_EQ(empty.size(), 8u);
    for (const auto& [key, value] : empty)
        EXPECT_TRUE(value.isNull()) << key;
}

TEST_F(SupportReport, addsNoDefaultsToThePreferences) {
    platform.phone.put(settings, Dictionary{{"HotCorners", false}});
    EXPECT_EQ(entry("Preferences"), Value(Dictionary{{"HotCorners", false}}));
}

TEST_F(SupportReport, takesPreferencesExactlyAsTheyAreStored) {
    const Dictionary odd{
        {"MultiCenter", 1}, {"Unknown", platform::Array{Value("text"), Value(2.5)}}, {"HotCorners", "yes"}};
    platform.phone.put(settings, odd);
    EXPECT_EQ(entry("Preferences"), Value(odd));
}

TEST_F(SupportReport, holdsAnEmptyDictionaryForAnEmptySettingsFile) {
    platform.phone.put(settings, Dictionary{});
    EXPECT_EQ(entry("Preferences"), Value(Dictionary{}));
}

TEST_F(SupportReport, holdsTheNullObjectForSettingsThatAreNoDictionary) {
    for (const std::string damaged :
         {"", "bplist00", "<plist><dict><key>HotCorners</key>", "<plist version=\"1.0\"><array/></plist>"}) {
        platform.phone.put(settings, damaged);
        EXPECT_TRUE(entry("Preferences").isNull()) << damaged;
    }
}

TEST_F(SupportReport, holdsAnEmptyTextForAnEmptyPackageDatabase) {
    platform.phone.put(packageDatabase, "");
    EXPECT_EQ(entry("Packages"), Value(""));
}

TEST_F(SupportReport, takesThePackageDatabaseByteForByte) {
    const std::string text = std::string("a\0b\r\n\n", 6) + "\xEF\xBB\xBF" + packages;
    platform.phone.put(packageDatabase, text);
    EXPECT_EQ(entry("Packages"), Value(text));
}

TEST_F(SupportReport, holdsTheNullObjectForAPackageDatabaseThatIsNotUtf8) {
    for (const std::string damaged : {"Name: Stra\xDF"
                                      "enbahn\n",
                                      "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "cut \xE2\x82"}) {
        platform.phone.put(packageDatabase, damaged);
        EXPECT_TRUE(entry("Packages").isNull()) << damaged;
    }
}

TEST_F(SupportReport, holdsTheNullObjectForAPackageDatabaseThatIsAFolder) {
    platform.phone.put("/var/lib/dpkg/status/inner", "text");
    EXPECT_TRUE(entry("Packages").isNull());
}

TEST_F(SupportReport, keepsTheOtherEntriesWhenOneIsMissing) {
    answerAll();
    platform.deviceQuery.answers.erase("DeviceColor");
    platform.phone.remove(packageDatabase);
    const Dictionary rest = report();
    EXPECT_TRUE(rest.find("DeviceColor")->isNull());
    EXPECT_TRUE(rest.find("Packages")->isNull());
    EXPECT_EQ(*rest.find("CPUArchitecture"), Value("arm64"));
    EXPECT_EQ(*rest.find("Preferences"), Value(Dictionary{{"HotCorners", false}}));
}

TEST_F(SupportReport, isReadBackByPlistlib) {
    answerAll();
    EXPECT_EQ(foreign::jsonByPlistlib(encoded()),
              "{\"CPUArchitecture\": \"arm64\", \"DeviceColor\": \"#e1e4e3\", "
              "\"DiskUsage\": {\"TotalDiskCapacity\": 16000000000}, "
              "\"Packages\": \"Package: com.fenwary.trivel3\\nStatus: install ok installed\\nName: Trivel 3\\n\\n"
              "Package: org.example.stra\\u00dfenbahn\\nName: \\ud83d\\ude8a\\n\", "
              "\"Preferences\": {\"HotCorners\": false}, \"ProductType\": \"iPhone7,2\", "
              "\"ProductVersion\": \"8.1.2\", \"UniqueDeviceID\": \"7c19e05f\"}");
}

TEST_F(SupportReport, isReadBackByPlistlibWhenNothingIsKnown) {
    EXPECT_EQ(foreign::jsonByPlistlib(encoded()),
              "{\"CPUArchitecture\": null, \"DeviceColor\": null, \"DiskUsage\": null, \"Packages\": null, "
              "\"Preferences\": null, \"ProductType\": null, \"ProductVersion\": null, \"UniqueDeviceID\": null}");
}

TEST_F(SupportReport, isReadBackByLibplist) {
    answerAll();
    const auto reading = platform::readPropertyList(foreign::convertedByPlistutil(encoded(), "xml"));
    ASSERT_TRUE(reading) << reading.error.reason;
    EXPECT_EQ(*reading.value, Value(report()));
}

// Before 2.3, libplist knew no null object and read nothing at all of a list that held one.
TEST_F(SupportReport, isReadBackByALibplistThatKnowsTheNullObject) {
    if (!foreign::plistutilKnowsNull()) GTEST_SKIP() << "this libplist knows no null object";
    answerAll();
    platform.deviceQuery.answers.erase("DeviceColor");
    const std::string json = foreign::convertedByPlistutil(encoded(), "json");
    EXPECT_THAT(json, HasSubstr("\"DeviceColor\": null"));
    EXPECT_THAT(json, HasSubstr("\"CPUArchitecture\": \"arm64\""));
}

}  // namespace
}  // namespace trivel3
