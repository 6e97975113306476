// SPDX-License-Identifier: MIT
#include "platform/foundation/bundle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/ui/image.h"
#include "tests/kit/print.h"
#include "tests/kit/test_platform.h"

namespace list_test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

const fs::path modules = TRIVEL3_TEST_MODULES;

constexpr auto bundlePath = "/Library/PreferenceBundles/Test.bundle";

/// A system image with one bundle in it, empty at first.
class Bundle : public testing::Test {
protected:
    Bundle() { fs::create_directories(bundleFolder()); }

    fs::path bundleFolder() const { return folder.path() / fs::path(bundlePath).relative_path(); }

    void put(const char* name, std::string_view content) const {
        std::ofstream(bundleFolder() / name, std::ios::binary) << content;
    }
    void putInfo(std::string_view executable) const {
        put("Info.plist", "<plist version=\"1.0\"><dict><key>CFBundleExecutable</key><string>" +
                              std::string(executable) + "</string><key>Count</key><integer>3</integer></dict></plist>");
    }
    void putModule(const char* name) const { fs::copy_file(modules / name, bundleFolder() / name); }

    std::string whyNotLoaded() {
        const auto loaded = bundle().load();
        return loaded ? "" : loaded.error().text();
    }

    platform::NSBundle bundle() { return host.system.bundleWithPath(bundlePath).value(); }

    kit::TemporaryFolder folder;
    kit::TestPlatform host{kit::tallPhone, folder.path()};
};

TEST_F(Bundle, isFoundByThePhonesPath) {
    EXPECT_EQ(bundle().path(), bundlePath);
    EXPECT_FALSE(host.system.bundleWithPath("/Library/PreferenceBundles/Other.bundle"));
}

TEST_F(Bundle, isAFolderAndNoFile) {
    put("file", "");
    EXPECT_FALSE(host.system.bundleWithPath(std::string(bundlePath) + "/file"));
}

TEST_F(Bundle, isNeverFoundOutsideTheSystemImage) {
    fs::create_directories(folder.path() / "Library/inner");
    for (const char* path : {"/Library/../..", "/..", "/Library/inner/../../..", "/../", "", "Library",
                             "../Library/PreferenceBundles/Test.bundle"}) {
        EXPECT_FALSE(host.system.bundleWithPath(path)) << path;
    }
}

TEST_F(Bundle, tellsWhatItsInfoSays) {
    putInfo("Module");
    EXPECT_EQ(bundle().infoString("CFBundleExecutable"), "Module");
    EXPECT_THAT(bundle().infoString("Count"), IsEmpty());
    EXPECT_THAT(bundle().infoString("NSPrincipalClass"), IsEmpty());
    EXPECT_EQ(bundle().infoDictionary().size(), 2u);
}

TEST_F(Bundle, hasNoInfoWhenTheFileIsMissingOrDamaged) {
    EXPECT_TRUE(bundle().infoDictionary().empty());
    for (const char* content : {"", "garbage", "<plist><dict>", "<plist><array/></plist>"}) {
        put("Info.plist", content);
        EXPECT_TRUE(bundle().infoDictionary().empty()) << content;
    }
}

TEST_F(Bundle, addsTheClassesOfItsModule) {
    putInfo("plain_module");
    putModule("plain_module");
    EXPECT_EQ(whyNotLoaded(), "");
    ASSERT_TRUE(host.classes.contains("PlainPage"));
    auto& page = host.screen.open("PlainPage");
    EXPECT_STREQ(page.className(), "PlainPage");
}

TEST_F(Bundle, changesNothingWhenItIsLoadedAgain) {
    putInfo("plain_module");
    putModule("plain_module");
    EXPECT_EQ(whyNotLoaded(), "");
    EXPECT_EQ(whyNotLoaded(), "");
    EXPECT_TRUE(host.classes.contains("PlainPage"));
}

TEST_F(Bundle, addsItsClassesToEachPlatformThatLoadsIt) {
    putInfo("plain_module");
    putModule("plain_module");
    kit::TestPlatform other(kit::tallPhone, folder.path());
    EXPECT_TRUE(bundle().load());
    EXPECT_FALSE(other.classes.contains("PlainPage"));
    EXPECT_TRUE(other.system.bundleWithPath(bundlePath)->load());
    EXPECT_TRUE(other.classes.contains("PlainPage"));
}

TEST_F(Bundle, doesNotLoadWithoutAModuleToLoad) {
    EXPECT_THAT(whyNotLoaded(), HasSubstr("CFBundleExecutable"));
    putInfo("Missing");
    EXPECT_THAT(whyNotLoaded(), HasSubstr("Missing"));
}

TEST_F(Bundle, doesNotLoadWhatIsNoModule) {
    putInfo("Text");
    put("Text", "no module at all");
    EXPECT_THAT(whyNotLoaded(), HasSubstr("Text"));
}

TEST_F(Bundle, doesNotLoadAModuleThatRegistersNothing) {
    putInfo("silent_module");
    putModule("silent_module");
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_THAT(whyNotLoaded(), HasSubstr("trivel3RegisterClasses"));
    }
}

TEST_F(Bundle, doesNotLoadAModuleThatNeedsWhatNobodyHas) {
    putInfo("needy_module");
    putModule("needy_module");
    EXPECT_THAT(whyNotLoaded(), HasSubstr("somethingThatNobodyHas"));
    EXPECT_FALSE(host.classes.contains("NeedyPage"));
}

TEST_F(Bundle, loadsNothingFromOutsideItself) {
    fs::copy_file(modules / "plain_module", folder.path() / "plain_module");
    fs::create_directory(bundleFolder() / "inner");
    fs::copy_file(modules / "plain_module", bundleFolder() / "inner/plain_module");
    for (const char* name : {"../../../plain_module", "inner/plain_module", "..", ".", "/plain_module"}) {
        putInfo(name);
        EXPECT_FALSE(bundle().load()) << name;
    }
    EXPECT_FALSE(host.classes.contains("PlainPage"));
}

/// The head of a PNG file, which is all that is looked at here.
std::string pngHead(unsigned char width, unsigned char height) {
    std::string head("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    head += std::string(3, '\0') + static_cast<char>(width) + std::string(3, '\0') + static_cast<char>(height);
    return head;
}

TEST_F(Bundle, givesThePathOfAResourceThatIsThere) {
    put("Names.strings", "");
    EXPECT_EQ(bundle().pathForResource_ofType("Names", "strings"), bundleFolder() / "Names.strings");
    for (const char* name : {"Other", "../Test.bundle/Names", "./Names", "/Names", ""})
        EXPECT_FALSE(bundle().pathForResource_ofType(name, "strings")) << name;
}

TEST_F(Bundle, givesTheImageMadeForTheScreen) {
    put("Picture.png", pngHead(10, 5));
    put("Picture@2x.png", pngHead(20, 10));
    put("Picture@3x.png", pngHead(30, 15));
    for (const int scale : {1, 2, 3}) {
        auto image = platform::UIImage::imageNamed_inBundle("Picture", bundle(), scale);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->scale(), scale);
        EXPECT_EQ(image->pixelWidth(), static_cast<unsigned>(10 * scale));
        EXPECT_EQ(image->size(), (platform::CGSize{10, 5}));
        EXPECT_EQ(image->name(), "Picture");
    }
}

TEST_F(Bundle, givesTheNextBestImage) {
    put("Picture@2x.png", pngHead(20, 10));
    for (const double scale : {0.0, 1.0, 2.0, 3.0, 4.0}) {
        auto image = platform::UIImage::imageNamed_inBundle("Picture", bundle(), scale);
        ASSERT_TRUE(image) << scale;
        EXPECT_EQ(image->scale(), 2) << scale;
    }
}

TEST_F(Bundle, givesNoImageThatIsMissingOrNone) {
    put("Text.png", "this is no picture, though it is as long as a picture's head is");
    put("Short.png", pngHead(10, 5).substr(0, 20));
    put("Picture.png", pngHead(10, 5));
    for (const char* name : {"Missing", "Text", "Short", "", "..", "../Test.bundle/Picture", "picture"}) {
        EXPECT_FALSE(platform::UIImage::imageNamed_inBundle(name, bundle(), 1)) << name;
    }
}

}  // namespace
}  // namespace list_test
