// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "picture.h"
#include "platform/foundation/property_list.h"
#include "tree.h"

namespace resources_test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::SizeIs;

const fs::path phone = TRIVEL3_SAMPLE_PHONE;
const fs::path source = fs::path(TRIVEL3_RESOURCES) / "sample-phone";

struct Application {
    fs::path folder;
    platform::Dictionary info;
    platform::PropertyListFormat format;

    std::string text(std::string_view key) const {
        const auto* value = info.find(key);
        return value && value->string() ? *value->string() : std::string();
    }
};

/// The applications below a folder of the phone; one whose Info.plist cannot be read is a failure.
std::vector<Application> applicationsBelow(const fs::path& folder) {
    std::vector<Application> applications;
    forEachFileNamed("Info.plist", phone / folder, [&](const fs::path& file) {
        const auto reading = platform::readPropertyList(bytesOf(file));
        ASSERT_TRUE(reading) << file << ": " << reading.error.reason;
        ASSERT_TRUE(reading.value->dictionary()) << file;
        applications.push_back({file.parent_path(), *reading.value->dictionary(), reading.format});
    });
    return applications;
}

std::vector<Application> systemApplications() {
    return applicationsBelow("Applications");
}

std::vector<Application> userApplications() {
    return applicationsBelow("var/mobile/Containers/Bundle/Application");
}

std::vector<Application> allApplications() {
    auto applications = systemApplications();
    std::ranges::copy(userApplications(), std::back_inserter(applications));
    return applications;
}

/// The names under "CFBundleIconFiles" of a dictionary, appended to `names`.
void appendIconFiles(const platform::Dictionary& dictionary, std::vector<std::string>& names) {
    const auto* files = dictionary.find("CFBundleIconFiles");
    if (!files || !files->array()) return;
    for (const auto& file : *files->array()) {
        if (file.string()) names.push_back(*file.string());
    }
}

/// The icon names that an application's Info.plist gives, in any of the three ways.
std::vector<std::string> iconNames(const Application& application) {
    std::vector<std::string> names;
    appendIconFiles(application.info, names);
    if (auto single = application.text("CFBundleIconFile"); !single.empty()) names.push_back(single);
    const auto* icons = application.info.find("CFBundleIcons");
    if (!icons || !icons->dictionary()) return names;
    const auto* primary = icons->dictionary()->find("CFBundlePrimaryIcon");
    if (primary && primary->dictionary()) appendIconFiles(*primary->dictionary(), names);
    return names;
}

/// How many square PNG files the icon name stands for: itself, or itself with a scale.
int iconFileCount(const Application& application, const std::string& name) {
    const auto stem = fs::path(name).stem().string();
    int count = 0;
    for (const auto* suffix : {".png", "@2x.png", "@3x.png"}) {
        const auto picture = readPicture(application.folder / (stem + suffix));
        if (picture && picture->width == picture->height) ++count;
    }
    return count;
}

TEST(SamplePhone, isTheSourceTreeWithoutItsPlaceholders) {
    const auto copied = treeOf(phone);
    const auto kept = treeOf(source, ".gitkeep");
    EXPECT_THAT(copied, Not(IsEmpty()));
    EXPECT_EQ(copied, kept);
}

TEST(SamplePhone, startsWithAnEmptyPreferencesFolder) {
    const auto preferences = phone / "var/mobile/Library/Preferences";
    ASSERT_TRUE(fs::is_directory(preferences));
    EXPECT_TRUE(fs::is_empty(preferences));
    for (const auto& [path, content] : treeOf(phone)) {
        EXPECT_THAT(path.filename().string(), Not(HasSubstr("com.fenwary"))) << "a settings file, " << path;
    }
}

TEST(SamplePhone, givesEveryApplicationAnIdentifierOfItsOwn) {
    const auto applications = allApplications();
    std::set<std::string> identifiers;
    for (const auto& application : applications)
        identifiers.insert(application.text("CFBundleIdentifier"));
    EXPECT_THAT(systemApplications(), SizeIs(13));
    EXPECT_THAT(userApplications(), SizeIs(12));
    EXPECT_THAT(identifiers, AllOf(SizeIs(applications.size()), Not(Contains(""))));
}

TEST(SamplePhone, writesInfoInBothEncodings) {
    std::map<platform::PropertyListFormat, int> applications;
    for (const auto& application : allApplications())
        ++applications[application.format];
    EXPECT_GE(applications[platform::PropertyListFormat::xml], 4);
    EXPECT_GE(applications[platform::PropertyListFormat::binary], 4);
}

TEST(SamplePhone, writesXmlAsThePlatformWould) {
    for (const auto& [path, content] : treeOf(phone)) {
        if (path.extension() != ".plist") continue;
        const auto reading = platform::readPropertyList(*content);
        ASSERT_TRUE(reading) << path;
        if (reading.format != platform::PropertyListFormat::xml) continue;
        EXPECT_EQ(platform::writeXmlPropertyList(*reading.value).bytes, content) << path;
    }
}

TEST(SamplePhone, namesApplicationsInEveryWayThatPhonesDo) {
    std::map<std::string, int> ways;
    for (const auto& application : userApplications()) {
        const bool displayName = application.info.contains("CFBundleDisplayName");
        const bool bundleName = application.info.contains("CFBundleName");
        ++ways[displayName ? "display name" : bundleName ? "bundle name" : "folder"];
        if (fs::exists(application.folder / "en.lproj/InfoPlist.strings")) ++ways["localised"];
    }
    EXPECT_EQ(ways.size(), 4U) << testing::PrintToString(ways);
    EXPECT_EQ(ways["localised"], 2);
}

TEST(SamplePhone, holdsAFileForEveryIconThatAnApplicationNames) {
    int named = 0;
    for (const auto& application : allApplications()) {
        for (const auto& name : iconNames(application)) {
            ++named;
            EXPECT_GT(iconFileCount(application, name), 0) << application.folder << ": " << name;
        }
    }
    EXPECT_GT(named, 0);
}

TEST(SamplePhone, leavesSomeApplicationsWithoutAnIcon) {
    EXPECT_THAT(allApplications(), Contains(testing::ResultOf(iconNames, IsEmpty())));
}

TEST(SamplePhone, answersEveryDeviceQueryOfTheSupportReport) {
    const auto device = dictionaryOf(phone / "device-information.plist");
    ASSERT_TRUE(device);
    for (const auto* key : {"UniqueDeviceID", "ProductVersion", "ProductType", "DeviceColor", "CPUArchitecture"}) {
        const auto* answer = device->find(key);
        EXPECT_TRUE(answer && answer->string() && !answer->string()->empty()) << key;
    }
    const auto* usage = device->find("DiskUsage");
    ASSERT_TRUE(usage && usage->dictionary());
    EXPECT_FALSE(usage->dictionary()->empty());
    for (const auto& entry : *usage->dictionary())
        EXPECT_TRUE(entry.value.integer()) << entry.key;
}

TEST(SamplePhone, agreesWithItselfOnTheSystemVersion) {
    const auto device = dictionaryOf(phone / "device-information.plist");
    const auto system = dictionaryOf(phone / "System/Library/CoreServices/SystemVersion.plist");
    ASSERT_TRUE(device && system);
    ASSERT_TRUE(system->contains("ProductVersion") && device->contains("ProductVersion"));
    EXPECT_EQ(*system->find("ProductVersion"), *device->find("ProductVersion"));
}

TEST(SamplePhone, listsTheAddOnAmongItsPackages) {
    EXPECT_THAT(bytesOf(phone / "var/lib/dpkg/status"),
                HasSubstr("Package: com.fenwary.trivel3\nStatus: install ok installed\n"));
}

}  // namespace
}  // namespace resources_test
