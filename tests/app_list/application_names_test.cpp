// SPDX-License-Identifier: MIT
// Under which name an application is listed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "phone_applications.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/utf8.h"

namespace app_list_test {
namespace application_names_test {

namespace {

constexpr std::string_view identifier = "com.example.app";

class ApplicationName : public testing::Test {
protected:
    ApplicationName() { EXPECT_TRUE(loadAppList(platform)); }

    /// What the application is called with these entries, in a folder "Folder.app".
    std::string nameWith(platform::Dictionary entries) {
        entries.set("CFBundleIdentifier", identifier);
        install(platform.phone, folder, entries);
        return name();
    }

    void setStrings(std::string_view bytes) { platform.phone.put(folder + "/en.lproj/InfoPlist.strings", bytes); }

    std::string name() {
        const auto applications = appList(platform)->applications();
        const auto found = applications.find(std::string(identifier));
        return found == applications.end() ? "(not listed)" : found->second;
    }

    const std::string folder = std::string(userFolder) + "/1/Folder.app";
    kit::TestPlatform platform;
};

TEST_F(ApplicationName, isTheDisplayName) {
    EXPECT_EQ(nameWith({{"CFBundleDisplayName", "Display"}, {"CFBundleName", "Bundle"}}), "Display");
}

TEST_F(ApplicationName, isElseTheBundlesName) {
    EXPECT_EQ(nameWith({{"CFBundleName", "Bundle"}}), "Bundle");
}

TEST_F(ApplicationName, isElseTheFoldersName) {
    EXPECT_EQ(nameWith({}), "Folder");
}

TEST_F(ApplicationName, passesOverNamesOfAnotherKind) {
    EXPECT_EQ(nameWith({{"CFBundleDisplayName", 7}, {"CFBundleName", platform::Array{"Bundle"}}}), "Folder");
}

TEST_F(ApplicationName, passesOverNamesThatShowNothing) {
    EXPECT_EQ(nameWith({{"CFBundleDisplayName", ""}, {"CFBundleName", " \n\t"}}), "Folder");
}

TEST_F(ApplicationName, isTheEnglishOneWhereThereIsOne) {
    setStrings("\"CFBundleDisplayName\" = \"English\";");
    EXPECT_EQ(nameWith({{"CFBundleDisplayName", "Display"}}), "English");
}

TEST_F(ApplicationName, isTheEnglishOneInEveryEncoding) {
    const platform::Value strings(platform::Dictionary{{"CFBundleDisplayName", "English"}});
    setStrings(*platform::writeXmlPropertyList(strings).bytes);
    EXPECT_EQ(nameWith({{"CFBundleDisplayName", "Display"}}), "English");
}

TEST_F(ApplicationName, isTheEnglishOneOfABinaryFile) {
    const platform::Value strings(platform::Dictionary{{"CFBundleDisplayName", "English"}});
    setStrings(*platform::writeBinaryPropertyList(strings).bytes);
    EXPECT_EQ(nameWith({{"CFBundleDisplayName", "Display"}}), "English");
}

TEST_F(ApplicationName, takesTheEnglishTextKeyByKey) {
    setStrings("\"CFBundleName\" = \"English bundle\";");
    EXPECT_EQ(nameWith({{"CFBundleDisplayName", "Display"}, {"CFBundleName", "Bundle"}}), "Display");
}

TEST_F(ApplicationName, isTheEnglishBundleNameWhenThereIsNoDisplayName) {
    setStrings("\"CFBundleName\" = \"English bundle\";");
    EXPECT_EQ(nameWith({{"CFBundleName", "Bundle"}}), "English bundle");
}

TEST_F(ApplicationName, doesWithoutAMalformedStringsFile) {
    setStrings("\"CFBundleDisplayName\" = \"English\"; oops");
    EXPECT_EQ(nameWith({{"CFBundleDisplayName", "Display"}}), "Display");
}

TEST_F(ApplicationName, keepsEveryScript) {
    const std::string_view scripts[] = {"Ελληνικά",           "日本語", "العربية", "עברית", "ไทย", "हिन्दी",
                                        "🌊🏳️‍🌈", "e\u0301"};
    for (const std::string_view script : scripts) {
        platform.phone.remove("/var/mobile/Containers");
        EXPECT_EQ(nameWith({{"CFBundleDisplayName", platform::Value(script)}}), script);
        // Else the service would keep the application that it knows.
        platform.phone.remove("/var/mobile/Containers");
        EXPECT_EQ(name(), "(not listed)");
    }
}

TEST_F(ApplicationName, isOneLine) {
    EXPECT_EQ(nameWith({{"CFBundleDisplayName", "One\nTwo\r\nThree\tFour\u2028Five\u2029Six"}}),
              "One Two  Three Four Five Six");
}

TEST_F(ApplicationName, holdsNoControlCharacters) {
    const std::string controls = std::string(
                                     "A\0B\x01"
                                     "C\x1B[31mD\x7F"
                                     "E",
                                     13) +
                                 "\u0080F\u0085G\u009FH\u00A0I";
    platform.phone.put(folder + "/Info.plist",
                       std::string_view(*platform::writeBinaryPropertyList(info(identifier, controls)).bytes));
    EXPECT_EQ(name(), "A B C [31mD E F G H\u00A0I");
}

TEST_F(ApplicationName, isCutBetweenCharactersWhenNoScreenCouldShowIt) {
    std::string endless;
    while (endless.size() < 100'000)
        endless += "潮";
    const std::string shown = nameWith({{"CFBundleDisplayName", endless}});
    EXPECT_GE(shown.size(), 500U);
    EXPECT_LE(shown.size(), 512U);
    EXPECT_TRUE(platform::isValidUtf8(shown));
    EXPECT_TRUE(endless.starts_with(shown));
}

TEST_F(ApplicationName, isTextEvenWhenTheFoldersNameIsNone) {
    install(platform.phone, std::string(userFolder) + "/2/Caf\xE9.app", {{"CFBundleIdentifier", identifier}});
    EXPECT_EQ(name(), "Caf\uFFFD");
}

}  // namespace
}  // namespace application_names_test
}  // namespace app_list_test
