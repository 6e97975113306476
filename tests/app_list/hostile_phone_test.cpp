// SPDX-License-Identifier: MIT
// Phones that hold what no phone should: the list shows what is whole, and nothing takes long.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "phone_applications.h"
#include "platform/foundation/property_list.h"
#include "tests/kit/png_maker.h"

namespace app_list_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsNull;
using testing::Key;
using testing::NotNull;
using testing::Pair;

/// What this process has computed, whatever else the machine is busy with.
class ProcessorTime {
public:
    double seconds() const { return static_cast<double>(std::clock() - _start) / CLOCKS_PER_SEC; }

private:
    std::clock_t _start = std::clock();
};

class HostilePhone : public testing::Test {
protected:
    HostilePhone() {
        EXPECT_TRUE(loadAppList(platform));
        installSystem(phone, "com.example.whole", "Whole");
    }

    auto all() { return appList(platform)->applications(); }
    void expectOnlyTheWholeOne() { EXPECT_THAT(all(), ElementsAre(Pair("com.example.whole", "Whole"))); }

    std::string installWithIcon(std::string_view iconName) {
        auto entries = info("com.example.icon", "Icon");
        entries.set("CFBundleIconFile", platform::Value(iconName));
        return install(phone, std::string(userFolder) + "/1/Icon.app", entries);
    }
    void putIcon(std::string_view bytes) { phone.put(installWithIcon("Icon.png") + "/Icon.png", bytes); }
    auto icon() { return appList(platform)->iconOfSize_forDisplayIdentifier(29, "com.example.icon"); }
    void expectListedWithoutIcon() {
        EXPECT_THAT(all(), Contains(Key("com.example.icon")));
        EXPECT_THAT(icon(), IsNull());
    }

    kit::TestPlatform platform;
    kit::TestPhone& phone = platform.phone;
    const std::string broken = "/Applications/Broken.app";
};

TEST_F(HostilePhone, skipsAnApplicationWithoutInfo) {
    fs::create_directories(phone.machinePath(broken));
    expectOnlyTheWholeOne();
}

TEST_F(HostilePhone, skipsAnApplicationWhoseInfoIsMalformed) {
    const std::string xml = *platform::writeXmlPropertyList(info("com.example.broken", "Broken")).bytes;
    const std::string binary = *platform::writeBinaryPropertyList(info("com.example.broken", "Broken")).bytes;
    for (const std::string& bytes : {std::string(), std::string("garbage"), std::string("bplist00"),
                                     xml.substr(0, xml.size() / 2), binary.substr(0, binary.size() / 2),
                                     std::string("<plist><array/></plist>"), std::string("<plist><dict/></plist>")}) {
        phone.put(broken + "/Info.plist", std::string_view(bytes));
        expectOnlyTheWholeOne();
    }
}

TEST_F(HostilePhone, skipsAnApplicationWithoutAUsableIdentifier) {
    for (const platform::Value& identifier :
         {platform::Value(7), platform::Value(true), platform::Value(""), platform::Value(platform::Array{"a"}),
          platform::Value(platform::Dictionary{}), platform::Value("com.example\n.broken"),
          platform::Value(std::string_view("com\0example", 11)), platform::Value("com.example.\x7F"),
          platform::Value(std::string(5000, 'a'))}) {
        const platform::Dictionary entries = {{"CFBundleIdentifier", identifier}, {"CFBundleDisplayName", "Broken"}};
        phone.put(broken + "/Info.plist", std::string_view(*platform::writeBinaryPropertyList(entries).bytes));
        expectOnlyTheWholeOne();
    }
}

TEST_F(HostilePhone, skipsAnApplicationWhoseInfoIsNoFile) {
    fs::create_directories(phone.machinePath(broken + "/Info.plist"));
    const std::string pipe = "/Applications/Pipe.app";
    fs::create_directories(phone.machinePath(pipe));
    ASSERT_EQ(::mkfifo(phone.machinePath(pipe + "/Info.plist").c_str(), 0644), 0);
    const std::string loop = "/Applications/Loop.app";
    fs::create_directories(phone.machinePath(loop));
    fs::create_symlink("Info.plist", phone.machinePath(loop + "/Info.plist"));
    expectOnlyTheWholeOne();
}

TEST_F(HostilePhone, skipsAnApplicationWhoseInfoIsTooLarge) {
    install(phone, broken, info("com.example.broken", "Broken"));
    fs::resize_file(phone.machinePath(broken + "/Info.plist"), std::uintmax_t{1} << 40);
    expectOnlyTheWholeOne();
}

TEST_F(HostilePhone, readsNothingOutsideThePhone) {
    const kit::TemporaryFolder outside;
    kit::EventLog log;
    fs::create_directories(outside.path() / "Away.app");
    const std::string bytes = *platform::writeXmlPropertyList(info("com.example.away", "Away")).bytes;
    std::ofstream(outside.path() / "Away.app/Info.plist") << bytes;
    fs::create_directory_symlink(outside.path() / "Away.app", phone.machinePath("/Applications/Away.app"));
    fs::create_directories(phone.machinePath(broken));
    fs::create_symlink(outside.path() / "Away.app/Info.plist", phone.machinePath(broken + "/Info.plist"));
    fs::create_directory_symlink(outside.path(), phone.machinePath("/var/containers"));
    expectOnlyTheWholeOne();
}

TEST_F(HostilePhone, readsNoIconOutsideTheApplicationsFolder) {
    const std::string secret = encodePng(plainPicture(58, {1, 2, 3, 255}));
    phone.put("/Applications/Secret.png", std::string_view(secret));
    phone.put("/Secret.png", std::string_view(secret));
    phone.put(std::string(userFolder) + "/1/Secret.png", std::string_view(secret));
    for (const std::string_view name :
         {"../Secret.png", "../Secret", "/Secret.png", "/Applications/Secret.png", "../../../../../../../Secret", "..",
          ".", "/", "", "Folder/../../Secret", "en.lproj/Icon.png", "../../etc/passwd", "/etc/passwd"}) {
        phone.remove("/var/mobile/Containers");
        phone.put(std::string(userFolder) + "/1/Secret.png", std::string_view(secret));
        const std::string folder = installWithIcon(name);
        phone.put(folder + "/en.lproj/Icon.png", std::string_view(secret));
        all();
        EXPECT_THAT(icon(), IsNull()) << name;
        phone.remove("/var/mobile/Containers");
        all();
    }
}

TEST_F(HostilePhone, readsNoIconThroughALinkOutOfThePhone) {
    const kit::TemporaryFolder outside;
    std::ofstream(outside.path() / "Icon.png") << encodePng(plainPicture(58, {1, 2, 3, 255}));
    const std::string folder = installWithIcon("Icon.png");
    fs::create_symlink(outside.path() / "Icon.png", phone.machinePath(folder + "/Icon.png"));
    expectListedWithoutIcon();
}

TEST_F(HostilePhone, doesWithoutAnIconThatIsNoPicture) {
    const std::string whole = encodePng(variedPicture(58, 58));
    for (const std::string& bytes :
         {std::string(), std::string("garbage"), std::string("\xFF\xD8\xFF\xE0"), std::string(pngSignature),
          whole.substr(0, whole.size() - 1), whole.substr(0, 60)}) {
        putIcon(bytes);
        expectListedWithoutIcon();
    }
    putIcon(whole);
    EXPECT_THAT(icon(), NotNull());
}

TEST_F(HostilePhone, doesWithoutAnIconThatIsHugeInItsHeader) {
    putIcon(std::string(pngSignature) + headerChunk(100'000, 100'000) +
            chunk("IDAT", compressedZeros(std::size_t{1} << 20, false)) + chunk("IEND", {}));
    expectListedWithoutIcon();
}

TEST_F(HostilePhone, doesWithoutAnIconFileThatIsTooLarge) {
    putIcon(encodePng(variedPicture(58, 58)));
    fs::resize_file(phone.machinePath(std::string(userFolder) + "/1/Icon.app/Icon.png"), std::uintmax_t{1} << 30);
    expectListedWithoutIcon();
}

TEST_F(HostilePhone, decodesOnlyAFewOfTheIconsThatPretend) {
    // Each is small, and takes long to find out that its last row is missing.
    const PngForm form{ColourType::colourAlpha, 16};
    const std::string data = compressedZeros(std::size_t{4096} * 8 * 4000, false);
    const std::string file =
        std::string(pngSignature) + headerChunk(4096, 4096, form) + chunk("IDAT", data) + chunk("IEND", {});
    auto entries = info("com.example.icon", "Icon");
    platform::Array names;
    for (int number = 0; number < 1000; ++number)
        names.push_back("Icon" + std::to_string(number));
    entries.set("CFBundleIconFiles", names);
    const std::string folder = install(phone, std::string(userFolder) + "/1/Icon.app", entries);
    for (int number = 0; number < 40; ++number) {
        for (const char* ending : {".png", "@2x.png", "@3x.png"})
            phone.put(folder + "/Icon" + std::to_string(number) + ending, std::string_view(file));
    }
    const ProcessorTime time;
    expectListedWithoutIcon();
    EXPECT_LT(time.seconds(), 20);
}

TEST_F(HostilePhone, endsTheSearchInAPhoneOfLinksToItself) {
    // Every folder of applications holds every other, each of them full.
    const std::string whole = "/Applications/com.example.whole.app";
    const fs::path container = phone.machinePath("/var/mobile/Applications/first");
    fs::create_directories(container);
    for (int number = 0; number < 2000; ++number)
        fs::create_directory_symlink(whole, container / (std::to_string(number) + ".app"));
    for (int number = 0; number < 2000; ++number)
        fs::create_directory_symlink("first", container.parent_path() / std::to_string(number));
    const ProcessorTime time;
    expectOnlyTheWholeOne();
    EXPECT_LT(time.seconds(), 60);
}

TEST_F(HostilePhone, endsTheSearchInAPhoneOfEndlessInfo) {
    const std::string large = "/var/mobile/large.plist";
    platform::Dictionary entries = info("com.example.large", "Large");
    entries.set("Padding", std::string(900'000, 'x'));
    phone.put(large, entries);
    for (int number = 0; number < 3000; ++number) {
        const fs::path folder = phone.machinePath("/Applications/" + std::to_string(number) + ".app");
        fs::create_directories(folder);
        fs::create_symlink(large, folder / "Info.plist");
    }
    const ProcessorTime time;
    EXPECT_THAT(all(), Contains(Key("com.example.large")));
    EXPECT_LT(time.seconds(), 60);
}

}  // namespace
}  // namespace app_list_test
