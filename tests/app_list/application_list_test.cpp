// SPDX-License-Identifier: MIT
// What the service of AppList.bundle reports of a phone on which all is well.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "hosts/phones/file_reading.h"
#include "phone_applications.h"
#include "platform/foundation/property_list.h"
#include "tests/kit/phone.h"

namespace app_list_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;
using testing::Pair;

class ApplicationList : public testing::Test {
protected:
    ApplicationList() { EXPECT_TRUE(loadAppList(platform)); }

    auto all() { return appList(platform)->applications(); }
    auto system() { return appList(platform)->applicationsFilteredBySystem(true); }
    auto user() { return appList(platform)->applicationsFilteredBySystem(false); }

    kit::TestPlatform platform;
    kit::TestPhone& phone = platform.phone;
};

TEST(AppListBundle, providesTheServiceOnlyWhenItIsLoaded) {
    kit::TestPlatform platform;
    EXPECT_FALSE(platform.classes.contains("ALApplicationList"));
    ASSERT_TRUE(loadAppList(platform));
    EXPECT_TRUE(platform.classes.contains("ALApplicationList"));
    EXPECT_THAT(appList(platform), NotNull());
}

TEST(AppListBundle, givesEachPlatformAServiceOfItsOwn) {
    kit::TestPlatform one;
    kit::TestPlatform other;
    ASSERT_TRUE(loadAppList(one));
    ASSERT_TRUE(loadAppList(other));
    installUser(one.phone, "com.example.one", "One");
    EXPECT_THAT(appList(one)->applications(), ElementsAre(Pair("com.example.one", "One")));
    EXPECT_THAT(appList(other)->applications(), IsEmpty());
}

TEST_F(ApplicationList, isEmptyOnAPhoneWithoutApplications) {
    EXPECT_THAT(all(), IsEmpty());
    EXPECT_THAT(system(), IsEmpty());
    EXPECT_THAT(user(), IsEmpty());
    EXPECT_THAT(appList(platform)->iconOfSize_forDisplayIdentifier(29, "com.example.none"), IsNull());
}

TEST_F(ApplicationList, tellsTheSystemsApplicationsFromTheUsers) {
    installSystem(phone, "com.example.clock", "Clock");
    installUser(phone, "com.example.tides", "Tides");
    EXPECT_THAT(all(), ElementsAre(Pair("com.example.clock", "Clock"), Pair("com.example.tides", "Tides")));
    EXPECT_THAT(system(), ElementsAre(Pair("com.example.clock", "Clock")));
    EXPECT_THAT(user(), ElementsAre(Pair("com.example.tides", "Tides")));
}

TEST_F(ApplicationList, findsTheUsersApplicationsWhereEachSystemVersionKeepsThem) {
    install(phone, "/var/mobile/Containers/Bundle/Application/1/A.app", info("a", "A"));
    install(phone, "/var/containers/Bundle/Application/2/B.app", info("b", "B"));
    install(phone, "/var/mobile/Applications/3/C.app", info("c", "C"));
    EXPECT_THAT(user(), ElementsAre(Pair("a", "A"), Pair("b", "B"), Pair("c", "C")));
}

TEST_F(ApplicationList, takesOnlyFoldersThatAreNamedAsApplications) {
    install(phone, "/Applications/Notes", info("no.ending", "No"));
    install(phone, "/Applications/.app", info("no.name", "No"));
    install(phone, "/Applications/Inner.app/PlugIns/Deep.app", info("inside.another", "No"));
    install(phone, "/var/mobile/Applications/Shallow.app", info("no.container", "No"));
    install(phone, "/var/mobile/Applications/1/Deep/Er.app", info("too.deep", "No"));
    phone.put("/Applications/File.app", "no folder");
    EXPECT_THAT(all(), IsEmpty());
}

TEST_F(ApplicationList, readsInfoOfBothEncodings) {
    install(phone, "/Applications/Xml.app", info("in.xml", "Xml"));
    phone.put("/Applications/Binary.app/Info.plist",
              std::string_view(*platform::writeBinaryPropertyList(info("in.binary", "Binary")).bytes));
    EXPECT_THAT(all(), ElementsAre(Pair("in.binary", "Binary"), Pair("in.xml", "Xml")));
}

TEST_F(ApplicationList, keepsTheFirstOfTwoApplicationsWithOneIdentifier) {
    install(phone, "/var/mobile/Containers/Bundle/Application/B/X.app", info("same.user", "Second"));
    install(phone, "/var/mobile/Containers/Bundle/Application/A/X.app", info("same.user", "First"));
    install(phone, "/var/mobile/Containers/Bundle/Application/A/Y.app", info("same.both", "User's"));
    install(phone, "/Applications/Z.app", info("same.both", "System's"));
    EXPECT_THAT(all(), ElementsAre(Pair("same.both", "System's"), Pair("same.user", "First")));
    EXPECT_THAT(user(), ElementsAre(Pair("same.user", "First")));
}

TEST_F(ApplicationList, tellsIdentifiersApartByCase) {
    installUser(phone, "com.example.tides", "Lower");
    installUser(phone, "com.Example.tides", "Upper");
    EXPECT_THAT(all(), ElementsAre(Pair("com.Example.tides", "Upper"), Pair("com.example.tides", "Lower")));
}

TEST_F(ApplicationList, followsLinksWithinThePhone) {
    install(phone, "/var/stash/Applications/Clock.app", info("com.example.clock", "Clock"));
    std::filesystem::create_directory_symlink("/var/stash/Applications", phone.machinePath("/Applications"));
    EXPECT_THAT(system(), ElementsAre(Pair("com.example.clock", "Clock")));
}

TEST_F(ApplicationList, showsWhatWasInstalledAndRemovedSinceItWasLastAsked) {
    const std::string gone = installUser(phone, "com.example.gone", "Gone");
    const std::string emptied = installUser(phone, "com.example.emptied", "Emptied");
    installUser(phone, "com.example.stays", "Stays");
    EXPECT_EQ(all().size(), 3U);

    phone.remove(gone.substr(0, gone.rfind('/')));
    phone.remove(emptied);
    installUser(phone, "com.example.new", "New");
    EXPECT_THAT(all(), ElementsAre(Pair("com.example.new", "New"), Pair("com.example.stays", "Stays")));
}

TEST_F(ApplicationList, showsAnApplicationThatWasIncompleteOnceItIsWhole) {
    const std::string folder = std::string(userFolder) + "/1/Tides.app";
    phone.put(folder + "/Info.plist", "");
    EXPECT_THAT(all(), IsEmpty());
    install(phone, folder, info("com.example.tides", "Tides"));
    EXPECT_THAT(all(), ElementsAre(Pair("com.example.tides", "Tides")));
}

TEST_F(ApplicationList, keepsBothPartsInStepWithTheWholeThatWasAskedFor) {
    installUser(phone, "com.example.tides", "Tides");
    EXPECT_EQ(all().size(), 1U);
    installUser(phone, "com.example.new", "New");
    EXPECT_THAT(user(), ElementsAre(Pair("com.example.tides", "Tides")));
}

TEST_F(ApplicationList, showsAnApplicationThatWasUpgradedInItsFolderAsItIsNow) {
    const std::string folder = installSystem(phone, "com.example.tides", "Tides");
    EXPECT_EQ(all().size(), 1U);
    install(phone, folder, info("com.example.tides2", "Tides 2"));
    EXPECT_THAT(all(), ElementsAre(Pair("com.example.tides2", "Tides 2")));
    EXPECT_THAT(system(), ElementsAre(Pair("com.example.tides2", "Tides 2")));
}

TEST_F(ApplicationList, showsAnUpgradeOfTheSameLength) {
    const std::string folder = installUser(phone, "com.example.tides", "Tides");
    for (const char* identifier : {"com.example.waves", "com.example.sands", "com.example.tides"}) {
        install(phone, folder, info(identifier, "Beach"));
        EXPECT_THAT(all(), ElementsAre(Pair(identifier, "Beach")));
    }
}

TEST_F(ApplicationList, showsTheEnglishNameAsItIsNow) {
    const std::string names = installUser(phone, "com.example.tides", "Tides") + "/en.lproj/InfoPlist.strings";
    EXPECT_THAT(all(), ElementsAre(Pair("com.example.tides", "Tides")));
    phone.put(names, "CFBundleDisplayName = \"Ebb\";");
    EXPECT_THAT(all(), ElementsAre(Pair("com.example.tides", "Ebb")));
    phone.put(names, "CFBundleDisplayName = \"Flow\";");
    EXPECT_THAT(all(), ElementsAre(Pair("com.example.tides", "Flow")));
    phone.remove(names);
    EXPECT_THAT(all(), ElementsAre(Pair("com.example.tides", "Tides")));
}

TEST_F(ApplicationList, readsAnApplicationAgainOnlyUntilItsFilesAreOldEnoughToBeKnownByTheirStamps) {
    if (!hosts::isFileSystemOfKernel(kit::openPhone(phone.machinePath("/")).root())) {
        GTEST_SKIP() << "the file system's clock is elsewhere";
    }
    installUser(phone, "com.example.tides", "Tides");
    std::size_t reads = 0;
    phone.onRead = [&reads](std::string_view path) { reads += path.ends_with("/Info.plist") ? 1 : 0; };
    all();
    EXPECT_EQ(reads, 1U);
    for (int tries = 0; reads > 0 && tries < 1000; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds{10});
        reads = 0;
        all();
    }
    EXPECT_EQ(reads, 0U);
    EXPECT_THAT(all(), ElementsAre(Pair("com.example.tides", "Tides")));
}

TEST_F(ApplicationList, readsNoIconUntilOneIsAskedFor) {
    auto withIcon = info("com.example.tides", "Tides");
    withIcon.set("CFBundleIconFile", "Icon.png");
    const std::string folder = install(phone, "/Applications/Tides.app", withIcon);
    phone.put(folder + "/Icon.png", "no picture");
    all();
    EXPECT_EQ(phone.takeReads(folder + "/Icon.png"), 0U);
    appList(platform)->iconOfSize_forDisplayIdentifier(29, "com.example.tides");
    EXPECT_EQ(phone.takeReads(folder + "/Icon.png"), 1U);
}

}  // namespace
}  // namespace app_list_test
