// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include "picture.h"
#include "platform/foundation/property_list.h"
#include "tree.h"

namespace resources_test {
namespace {

namespace fs = std::filesystem;

const fs::path bundle = TRIVEL3_BUNDLE;

enum class Shape {
    tile,      ///< a rounded square: clear corners, opaque elsewhere
    square,    ///< opaque all over; whoever shows it rounds it
    freeform,  ///< a figure on clear ground
};

struct Image {
    std::string_view name;
    std::size_t width;  ///< in points, as `height`
    std::size_t height;
    Shape shape;
};

/// Every image that the pane asks for by name.
constexpr std::array images{
    Image{"Logo", 29, 29, Shape::freeform},     Image{"Heart", 24, 22, Shape::freeform},
    Image{"Multi-Center", 29, 29, Shape::tile}, Image{"QuickSwitcher", 29, 29, Shape::tile},
    Image{"HotCorners", 29, 29, Shape::tile},   Image{"Configuration", 29, 29, Shape::tile},
    Image{"Creators", 29, 29, Shape::tile},     Image{"Support", 29, 29, Shape::tile},
    Image{"Ostrel", 29, 29, Shape::tile},       Image{"Twitter", 19, 15, Shape::freeform},
    Image{"Daxon", 60, 60, Shape::square},      Image{"Movane", 60, 60, Shape::square},
};

struct Scale {
    std::size_t pixelsPerPoint;
    std::string_view suffix;
};

constexpr std::array scales{Scale{1, ".png"}, Scale{2, "@2x.png"}, Scale{3, "@3x.png"}};

fs::path fileName(const Image& image, const Scale& scale) {
    return std::string(image.name).append(scale.suffix);
}

/// Calls `check` with each image's picture in each scale; a picture that cannot be read is a failure.
template <class Check>
void forEachPicture(Check check) {
    for (const auto& image : images) {
        for (const auto& scale : scales) {
            SCOPED_TRACE(fileName(image, scale));
            const auto picture = readPicture(bundle / fileName(image, scale));
            EXPECT_TRUE(picture) << "missing or damaged";
            if (picture) check(image, scale, *picture);
        }
    }
}

bool cornersAreClear(const Picture& picture) {
    const auto right = picture.width - 1;
    const auto bottom = picture.height - 1;
    return picture.opacityAt(0, 0) < 64 && picture.opacityAt(right, 0) < 64 && picture.opacityAt(0, bottom) < 64 &&
           picture.opacityAt(right, bottom) < 64;
}

bool sidesAreOpaqueInTheMiddle(const Picture& picture) {
    const auto column = picture.width / 2;
    const auto row = picture.height / 2;
    return picture.opacityAt(column, 0) == 255 && picture.opacityAt(column, picture.height - 1) == 255 &&
           picture.opacityAt(0, row) == 255 && picture.opacityAt(picture.width - 1, row) == 255;
}

TEST(Bundle, holdsEveryImageInThreeScalesOfItsSizeInPoints) {
    forEachPicture([](const Image& image, const Scale& scale, const Picture& picture) {
        EXPECT_EQ(picture.width, image.width * scale.pixelsPerPoint);
        EXPECT_EQ(picture.height, image.height * scale.pixelsPerPoint);
    });
}

TEST(Bundle, holdsNoPictureThatNobodyAsksFor) {
    std::set<fs::path> asked;
    for (const auto& image : images) {
        for (const auto& scale : scales)
            asked.insert(fileName(image, scale));
    }
    std::set<fs::path> held;
    for (const auto& entry : fs::directory_iterator(bundle)) {
        if (entry.path().extension() == ".png") held.insert(entry.path().filename());
    }
    EXPECT_EQ(held, asked);
}

TEST(Bundle, drawsEveryImageInTheOutlineOfItsKind) {
    forEachPicture([](const Image& image, const Scale&, const Picture& picture) {
        const auto& opacities = picture.opacities;
        const auto opaque = std::ranges::count(opacities, 255);
        EXPECT_EQ(cornersAreClear(picture), image.shape != Shape::square);
        if (image.shape != Shape::freeform) {
            EXPECT_TRUE(sidesAreOpaqueInTheMiddle(picture));
        }
        if (image.shape == Shape::square) {
            EXPECT_EQ(opaque, std::ssize(opacities));
        }
        EXPECT_GT(opaque, std::ssize(opacities) / 4) << "an almost empty picture";
    });
}

TEST(Bundle, namesItsPrincipalClassAndItsModule) {
    const auto info = dictionaryOf(bundle / "Info.plist");
    ASSERT_TRUE(info);
    const auto text = [&](std::string_view key) {
        const auto* value = info->find(key);
        return value && value->string() ? *value->string() : std::string();
    };
    EXPECT_EQ(text("CFBundleIdentifier"), "com.fenwary.trivel3preferences");
    EXPECT_EQ(text("CFBundleExecutable"), "Trivel3Preferences");
    EXPECT_EQ(text("CFBundlePackageType"), "BNDL");
    EXPECT_EQ(text("NSPrincipalClass"), "KavixPreferencesController");
    EXPECT_EQ(text("CFBundleDisplayName"), "Trivel 3");
    EXPECT_EQ(text("MinimumOSVersion"), "8.0");
}

TEST(Bundle, writesItsInfoAsThePlatformWould) {
    const auto bytes = bytesOf(bundle / "Info.plist");
    const auto reading = platform::readPropertyList(bytes);
    ASSERT_TRUE(reading);
    EXPECT_EQ(platform::writeXmlPropertyList(*reading.value).bytes, bytes);
}

}  // namespace
}  // namespace resources_test
