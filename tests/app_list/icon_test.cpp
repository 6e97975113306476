// SPDX-License-Identifier: MIT
// Which of an application's files its icon comes from, and what becomes of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "phone_applications.h"
#include "tests/kit/png_maker.h"
#include "tests/kit/print.h"

namespace app_list_test {

using namespace kit;

namespace icon_test {

namespace {

using testing::IsNull;
using testing::NotNull;

constexpr std::string_view identifier = "com.example.app";
constexpr std::uint8_t opaque = 255;

platform::Value primaryIcon(platform::Value files) {
    return platform::Dictionary{{"CFBundlePrimaryIcon", platform::Dictionary{{"CFBundleIconFiles", std::move(files)}}}};
}

class Icon : public testing::Test {
protected:
    explicit Icon(kit::Shape shape = kit::tallPhone) : platform(shape) { EXPECT_TRUE(loadAppList(platform)); }

    void setInfo(platform::Dictionary entries) {
        entries.set("CFBundleIdentifier", identifier);
        install(platform.phone, folder, entries);
    }

    /// Puts a file of one grey, which tells it from the others.
    void putFile(std::string_view name, std::uint32_t side, std::uint8_t grey) {
        putBytes(name, encodePng(plainPicture(side, {grey, grey, grey, opaque})));
    }
    void putBytes(std::string_view name, std::string_view bytes) {
        platform.phone.put(folder + "/" + std::string(name), bytes);
    }

    std::shared_ptr<const platform::UIImage> icon(int points = 29) {
        return appList(platform)->iconOfSize_forDisplayIdentifier(points, identifier);
    }

    /// The grey of the file that the icon comes from; -1 when there is no icon.
    int shownGrey() {
        const auto image = icon();
        return image ? image->rgba().front() : -1;
    }

    const std::string folder = "/Applications/Folder.app";
    kit::TestPlatform platform;
};

class IconOnLargePhone : public Icon {
protected:
    IconOnLargePhone() : Icon(kit::largePhone) {}
};

class IconOnTablet : public Icon {
protected:
    IconOnTablet() : Icon(kit::tablet) {}
};

TEST_F(Icon, comesFromTheFileThatIsMadeForTheSizeAndTheScreen) {
    setInfo({{"CFBundleIcons", primaryIcon(platform::Array{"AppIcon60x60", "AppIcon29x29"})}});
    putFile("AppIcon29x29.png", 29, 1);
    putFile("AppIcon29x29@2x.png", 58, 2);
    putFile("AppIcon29x29@3x.png", 87, 3);
    putFile("AppIcon60x60@2x.png", 120, 4);
    EXPECT_EQ(shownGrey(), 2);
}

TEST_F(IconOnLargePhone, comesFromTheFileThatIsMadeForTheSizeAndTheScreen) {
    setInfo({{"CFBundleIcons", primaryIcon(platform::Array{"AppIcon60x60", "AppIcon29x29"})}});
    putFile("AppIcon29x29@2x.png", 58, 2);
    putFile("AppIcon29x29@3x.png", 87, 3);
    putFile("AppIcon60x60@3x.png", 180, 4);
    EXPECT_EQ(shownGrey(), 3);
    EXPECT_EQ(icon()->pixelWidth(), 87U);
    EXPECT_EQ(icon()->scale(), 3);
}

TEST_F(Icon, isNamedByItsApplicationAndMeasuresWhatWasAskedFor) {
    setInfo({{"CFBundleIconFile", "Icon.png"}});
    putFile("Icon.png", 58, 9);
    ASSERT_THAT(icon(), NotNull());
    EXPECT_EQ(icon()->name(), identifier);
    EXPECT_EQ(icon()->pixelWidth(), 58U);
    EXPECT_EQ(icon()->pixelHeight(), 58U);
    EXPECT_EQ(icon()->scale(), 2);
    EXPECT_EQ(icon()->size(), (platform::CGSize{29, 29}));
}

TEST_F(Icon, isMadeSmallerFromTheNearestLargerFile) {
    setInfo({{"CFBundleIconFiles", platform::Array{"Large", "Small", "Nearest", "Huge"}}});
    putFile("Large.png", 120, 1);
    putFile("Small.png", 57, 2);
    putFile("Nearest.png", 80, 3);
    putFile("Huge.png", 512, 4);
    EXPECT_EQ(shownGrey(), 3);
    EXPECT_EQ(icon()->pixelWidth(), 58U);
    EXPECT_EQ(icon()->size(), (platform::CGSize{29, 29}));
}

TEST_F(Icon, comesFromTheLargestFileWhenAllAreTooSmall) {
    setInfo({{"CFBundleIconFiles", platform::Array{"Tiny", "Small"}}});
    putFile("Tiny.png", 16, 1);
    putFile("Small.png", 29, 2);
    EXPECT_EQ(shownGrey(), 2);
    EXPECT_EQ(icon()->pixelWidth(), 29U) << "not enlarged";
    EXPECT_EQ(icon()->size(), (platform::CGSize{29, 29}));
}

TEST_F(Icon, isSquareWhateverTheFilesShape) {
    setInfo({{"CFBundleIconFile", "Icon.png"}});
    putBytes("Icon.png", encodePng(variedPicture(116, 58)));
    ASSERT_THAT(icon(), NotNull());
    EXPECT_EQ(icon()->pixelWidth(), 58U);
    EXPECT_EQ(icon()->pixelHeight(), 58U);
}

TEST_F(Icon, mayBeAskedForInOtherSizes) {
    setInfo({{"CFBundleIconFile", "Icon.png"}});
    putFile("Icon.png", 200, 9);
    EXPECT_EQ(icon(60)->pixelWidth(), 120U);
    EXPECT_EQ(icon(60)->size(), (platform::CGSize{60, 60}));
    for (const int points : {0, -29, INT32_MIN, INT32_MAX})
        EXPECT_THAT(icon(points), IsNull()) << points;
}

TEST_F(Icon, comesFromThePhonesOwnFormOfPng) {
    setInfo({{"CFBundleIconFile", "Icon.png"}});
    putBytes("Icon.png", encodeOptimisedPng(plainPicture(58, {200, 100, 50, opaque})));
    ASSERT_THAT(icon(), NotNull());
    EXPECT_EQ(icon()->rgba(), plainPicture(58, {200, 100, 50, opaque}).rgba);
}

TEST_F(Icon, isFoundUnderEachKeyOfTheInfo) {
    std::vector<platform::Dictionary> infos = {
        {{"CFBundleIcons", primaryIcon(platform::Array{"Icon"})}},
        {{"CFBundleIcons~iphone", primaryIcon(platform::Array{"Icon"})}},
        {{"CFBundleIcons~ipad", primaryIcon(platform::Array{"Icon"})}},
        {{"CFBundleIconFiles", platform::Array{"Icon"}}},
        {{"CFBundleIconFiles~iphone", platform::Array{"Icon"}}},
        {{"CFBundleIconFiles~ipad", platform::Array{"Icon"}}},
        {{"CFBundleIconFile", "Icon"}},
        {{"CFBundleIconFile~iphone", "Icon"}},
        {{"CFBundleIconFile~ipad", "Icon"}},
        {{"CFBundleIcons", "odd"}, {"CFBundleIconFiles", 3}, {"CFBundleIconFile", "Icon"}},
    };
    const std::string picture = encodePng(plainPicture(58, {9, 9, 9, opaque}));
    for (platform::Dictionary& entries : infos) {
        const std::string own = "com.example." + std::to_string(&entries - infos.data());
        entries.set("CFBundleIdentifier", own);
        platform.phone.put(install(platform.phone, "/Applications/" + own + ".app", entries) + "/Icon.png",
                           std::string_view(picture));
    }
    for (const platform::Dictionary& entries : infos) {
        const std::string& own = *entries.find("CFBundleIdentifier")->string();
        EXPECT_THAT(appList(platform)->iconOfSize_forDisplayIdentifier(29, own), NotNull()) << platform::Value(entries);
    }
}

TEST_F(Icon, isFoundByEachFormOfItsName) {
    setInfo({{"CFBundleIconFiles",
              platform::Array{"A", "B.png", "C@2x", "D@2x.png", "E~iphone", "F@2x~iphone.png", "G@3x", "H"}}});
    const std::string_view files[] = {"A.png",           "A@2x.png", "B@2x.png",        "C@2x.png",     "D.png",
                                      "E@2x~iphone.png", "F.png",    "G@3x~iphone.png", "H@2x~ipad.png"};
    for (const std::string_view file : files) {
        putFile(file, 58, 9);
        EXPECT_EQ(shownGrey(), 9) << file;
        std::filesystem::remove(platform.phone.machinePath(folder + "/" + std::string(file)));
        EXPECT_EQ(shownGrey(), -1) << file;
    }
}

TEST_F(Icon, prefersTheFilesOfItsOwnKindOfDevice) {
    setInfo({{"CFBundleIconFile", "Icon"}});
    putFile("Icon@2x.png", 58, 1);
    putFile("Icon@2x~ipad.png", 58, 2);
    EXPECT_EQ(shownGrey(), 1);
    putFile("Icon@2x~iphone.png", 58, 3);
    EXPECT_EQ(shownGrey(), 3);
}

TEST_F(IconOnTablet, prefersTheFilesOfItsOwnKindOfDevice) {
    setInfo({{"CFBundleIcons", primaryIcon(platform::Array{"Phone"})},
             {"CFBundleIcons~ipad", primaryIcon(platform::Array{"Tablet"})}});
    putFile("Phone@2x.png", 58, 1);
    EXPECT_EQ(shownGrey(), 1);
    putFile("Tablet@2x~iphone.png", 58, 2);
    EXPECT_EQ(shownGrey(), 2);
    putFile("Tablet@2x.png", 58, 3);
    EXPECT_EQ(shownGrey(), 3);
    putFile("Tablet@2x~ipad.png", 58, 4);
    EXPECT_EQ(shownGrey(), 4);
}

TEST_F(Icon, comesFromTheNextBestFileWhenTheBestIsDamaged) {
    setInfo({{"CFBundleIconFiles", platform::Array{"Best", "Next"}}});
    const std::string whole = encodePng(variedPicture(58, 58));
    putBytes("Best.png", std::string_view(whole).substr(0, whole.size() / 2));
    putFile("Next.png", 120, 7);
    EXPECT_EQ(shownGrey(), 7);
}

TEST_F(Icon, isReadAnewEachTimeThatItIsAskedFor) {
    setInfo({{"CFBundleIconFile", "Icon"}});
    EXPECT_EQ(shownGrey(), -1);
    putFile("Icon.png", 58, 5);
    EXPECT_EQ(shownGrey(), 5);
}

TEST_F(Icon, isThatOfTheApplicationAsItIsNow) {
    setInfo({{"CFBundleIconFile", "Old"}});
    putFile("Old@2x.png", 58, 10);
    putFile("New@2x.png", 58, 20);
    EXPECT_EQ(shownGrey(), 10);
    setInfo({{"CFBundleIconFile", "New"}});
    EXPECT_EQ(shownGrey(), 20);
    putFile("New@2x.png", 58, 30);
    EXPECT_EQ(shownGrey(), 30);
}

}  // namespace
}  // namespace icon_test
}  // namespace app_list_test
