// SPDX-License-Identifier: MIT
// Phones that are made to attack the program that opens them, and the real program. It ends, with
// little memory, and touches nothing outside of the phone's folder.
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iomanip>
#include <map>
#include <optional>
#include <sstream>

#include "drive.h"
#include "platform/foundation/property_list.h"
#include "tests/kit/document_tables.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/png_maker.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

constexpr std::size_t megabyte = std::size_t{1} << 20;
const std::string applicationsPage = "Advanced Options/Disable in Applications";
const std::string containers = userApplications;
const std::string exceptionsPath = "/var/mobile/Library/Preferences/com.fenwary.trivel3.exceptions.plist";

std::string infoOf(const std::string& identifier, const std::string& more = {}) {
    return propertyList("<dict><key>CFBundleIdentifier</key><string>" + identifier + "</string>" + more + "</dict>\n");
}

// Small as a file.
std::string pictureWithoutItsLastRow(std::uint32_t side) {
    const std::string rows = compressedZeros((std::size_t{side} * 4 + 1) * (side - 1), false);
    return std::string(pngSignature) + headerChunk(side, side) + chunk("IDAT", rows) + chunk("IEND", {});
}

// What the programs that a test has run took at most, test by test.
class Figures {
public:
    void note(const std::string& test, const Outcome& outcome) {
        Most& most = _byTest[test];
        most.seconds = std::max(most.seconds, outcome.processorTime);
        most.bytes = std::max(most.bytes, outcome.peakMemory);
    }

    std::string table() const {
        std::ostringstream text;
        text << std::fixed << std::setprecision(1)
             << "**One run of `trivel3ctl` on a phone that attacks**\n\n"
                "| phone | processor time, s | memory at the peak, MB |\n|---|--:|--:|\n";
        for (const auto& [test, most] : _byTest) {
            text << "| `" << test << "` | " << most.seconds << " | "
                 << static_cast<double>(most.bytes) / static_cast<double>(megabyte) << " |\n";
        }
        return text.str() + "\n";
    }

private:
    struct Most {
        double seconds = 0;
        std::size_t bytes = 0;
    };

    std::map<std::string, Most> _byTest;
};

struct AttackingPhone : testing::Test {
    static void SetUpTestSuite() { figures.emplace(); }
    static void TearDownTestSuite() { kit::addToTables(figures->table()); }

    AttackingPhone() {
        ctl.usePhone(phone.folder);
        fs::create_directories(phone.preferencesFolder());
    }

    // What sanitizers need for themselves is not the program's.
    static void expectPeakBelow(const Outcome& outcome, [[maybe_unused]] std::size_t bytes) {
        figures->note(testing::UnitTest::GetInstance()->current_test_info()->name(), outcome);
#ifndef TRIVEL3_SANITIZED
        EXPECT_LT(outcome.peakMemory, bytes);
#endif
        EXPECT_GE(outcome.status, 0) << "signal " << -outcome.status;
    }

    // Every subcommand, and every page and file that one of them comes by.
    std::vector<Outcome> useEverything() {
        std::vector<Outcome> outcomes;
        for (const Trivel3ctl::Arguments& arguments : {Trivel3ctl::Arguments{"show"},
                                                       {"show", applicationsPage},
                                                       {"show", "Advanced Options/Close All Apps", "--json"},
                                                       {"list"},
                                                       {"get", "HotCorners"},
                                                       {"set", "HotCorners", "off"},
                                                       {"reset", "--all"},
                                                       {}}) {
            outcomes.push_back(ctl.run(arguments));
        }
        outcomes.push_back(ctl.run({"drive"}, driven()));
        return outcomes;
    }

    // Writes both settings files, and makes a support report.
    static std::string driven() {
        std::string lines;
        for (const json& command :
             {json{{"do", "tap"}, {"row", "Fenwary Support"}},
              json{{"do", "switch"}, {"row", "Hot Corners"}, {"on", false}},
              json{{"do", "tap"}, {"row", "Advanced Options"}}, json{{"do", "tap"}, {"row", "Disable in Applications"}},
              json{{"do", "tap"}, {"row", {{"section", 0}, {"row", 0}}}},
              json{{"do", "tap"}, {"row", {{"section", 1}, {"row", 0}}}}, json{{"do", "view"}}})
            lines += command.dump() + "\n";
        return lines;
    }

    inline static std::optional<Figures> figures;
    Trivel3ctl ctl;
    Phone phone;
};

/// A folder beside the phone of which the kernel tells whatever is done to it: opened, read, listed,
/// changed.
class WatchedOutside {
public:
    explicit WatchedOutside(const std::string& folder) : _folder(folder) {
        writeText(file("settings.plist"), settingsOf({{"HotCorners", "<false/>"}}));
        writeText(file("com.fenwary.trivel3.plist"), settingsOf({{"HotCorners", "<false/>"}}));
        writeText(file("com.fenwary.trivel3.exceptions.plist"), settingsOf({{"outside", "<true/>"}}));
        writeText(file("status"), "Package: outside\n");
        writeText(file("Outside.app/Info.plist"), infoOf("outside"));
        writeText(file("Outside.app/Icon.png"), "no picture");
        ::mkfifo(file("fifo").c_str(), 0644);
        _before = state();
        _events = hosts::Descriptor{::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
        // From here on, nobody looks but the kernel.
        for (const auto& [path, content] : _before)
            watch(path);
    }

    std::string file(const std::string& name) const { return _folder + "/" + name; }

    void expectUntouched() const {
        std::array<char, 4096> events;
        EXPECT_EQ(::read(_events.get(), events.data(), events.size()), -1) << "something was opened or changed";
        EXPECT_EQ(state(), _before);
    }

private:
    void watch(const std::string& path) {
        ASSERT_GE(::inotify_add_watch(_events.get(), path.c_str(), IN_ALL_EVENTS), 0);
    }

    std::map<std::string, std::string> state() const {
        std::map<std::string, std::string> all{{_folder, {}}};
        for (const auto& entry : fs::recursive_directory_iterator{_folder})
            all[entry.path()] = entry.is_regular_file() ? readText(entry.path()) : std::string();
        return all;
    }

    std::string _folder;
    std::map<std::string, std::string> _before;
    hosts::Descriptor _events;
};

// Each place of the phone that is read or written is a link out, in each of the ways to write one.
struct LinksOut : AttackingPhone, testing::WithParamInterface<const char*> {
    void link(const std::string& target, const std::string& path) {
        const fs::path place = phone.folder + path;
        fs::remove_all(place);
        fs::create_directories(place.parent_path());
        fs::create_symlink(GetParam() + outside.file(target), place);
        ASSERT_TRUE(fs::exists(place)) << "a program that takes no care would not come out either";
    }
    void expectConfined() {
        for (const Outcome& outcome : useEverything()) {
            EXPECT_GE(outcome.status, 0);
            EXPECT_THAT(outcome.output, Not(HasSubstr("outside")));
        }
        outside.expectUntouched();
    }

    WatchedOutside outside{phone.around / "secret"};
};

TEST_P(LinksOut, inPlaceOfFilesLeadNowhere) {
    link("settings.plist", settingsPath);
    link("com.fenwary.trivel3.exceptions.plist", exceptionsPath);
    link("settings.plist", "/device-information.plist");
    link("settings.plist", "/System/Library/CoreServices/SystemVersion.plist");
    link("status", "/var/lib/dpkg/status");
    writeText(phone / "Applications/Real.app/Info.plist",
              infoOf("real", "<key>CFBundleIconFiles</key><array><string>Icon</string></array>"));
    link("Outside.app/Icon.png", "/Applications/Real.app/Icon.png");
    link("Outside.app/Info.plist", "/Applications/Linked.app/Info.plist");
    link("Outside.app/Info.plist", "/Applications/Real.app/en.lproj/InfoPlist.strings");
    expectConfined();
}

TEST_P(LinksOut, inPlaceOfFilesOfTheirFoldersLeadNowhere) {
    link("", std::string("/") + preferences);
    link("Outside.app", "/Applications/Linked.app");
    link("", containers + "/1");
    link("", "/var/lib/dpkg");
    link("", "/System");
    expectConfined();
}

TEST_P(LinksOut, inPlaceOfFoldersOnTheWayLeadNowhere) {
    link("", "/var");
    link("", "/Applications");
    expectConfined();
}

TEST_P(LinksOut, toWhatWouldHoldAReaderUpLeadNowhere) {
    link("fifo", settingsPath);
    link("fifo", exceptionsPath);
    link("fifo", "/var/lib/dpkg/status");
    link("fifo", "/Applications/Linked.app/Info.plist");
    expectConfined();
}

// The folder that the links start from is at most this deep below the machine's root.
INSTANTIATE_TEST_SUITE_P(AttackingPhone, LinksOut,
                         testing::Values("", "/proc/self/root", "../../../../../../../../../../../../../../..",
                                         "/proc/self/cwd/../../../../../../../../.."));

// What the program cannot read as a file must not hold it up.
TEST_F(AttackingPhone, everyFileMayBeAFifo) {
    for (const std::string& path :
         {std::string(settingsPath), exceptionsPath, std::string("/device-information.plist"),
          std::string("/var/lib/dpkg/status"), std::string("/Applications/Pipe.app/Info.plist"), containers + "/1"}) {
        fs::create_directories(fs::path(phone.folder + path).parent_path());
        ASSERT_EQ(::mkfifo((phone.folder + path).c_str(), 0644), 0);
    }
    for (const Outcome& outcome : useEverything())
        expectPeakBelow(outcome, 64 * megabyte);
}

// Devices that never end, and one that answers with an error.
TEST_F(AttackingPhone, everyFileMayBeADevice) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root makes devices";
    constexpr dev_t zero = 1 << 8 | 5;
    constexpr dev_t full = 1 << 8 | 7;
    fs::create_directories(phone / "Applications/Device.app");
    fs::create_directories(phone / "var/lib/dpkg");
    if (::mknod(phone.settingsFile().c_str(), S_IFCHR | 0644, zero) != 0) GTEST_SKIP() << "devices are not allowed";
    ASSERT_EQ(::mknod((phone.folder + exceptionsPath).c_str(), S_IFCHR | 0644, full), 0);
    ASSERT_EQ(::mknod((phone / "Applications/Device.app/Info.plist").c_str(), S_IFCHR | 0644, zero), 0);
    ASSERT_EQ(::mknod((phone / "var/lib/dpkg/status").c_str(), S_IFCHR | 0644, zero), 0);
    for (const Outcome& outcome : useEverything())
        expectPeakBelow(outcome, 64 * megabyte);
}

TEST_F(AttackingPhone, everyFileMayClaimToBeFourGigabytes) {
    for (const std::string& path :
         {std::string(settingsPath), exceptionsPath, std::string("/device-information.plist"),
          std::string("/var/lib/dpkg/status"), std::string("/Applications/Big.app/Info.plist")}) {
        writeText(phone.folder + path, "");
        fs::resize_file(phone.folder + path, std::uintmax_t{4} << 30);
    }
    for (const Outcome& outcome : useEverything())
        expectPeakBelow(outcome, 64 * megabyte);
}

// Reading costs the file itself and what its values take, and writing what is written besides.
TEST_F(AttackingPhone, aSettingsFileOf64MegabytesIsReadAndChanged) {
    std::ofstream file(phone.settingsFile(), std::ios::binary);
    file << "<plist version=\"1.0\"><dict><key>HotCorners</key><false/><key>Many</key><array>";
    for (int i = 0; i < 9 * 1024 * 1024; ++i)
        file << "<true/>";
    file << "</array></dict></plist>" << std::flush;
    file.close();
    ASSERT_GT(fs::file_size(phone.settingsFile()), 60 * megabyte);
    const Outcome got = ctl.run({"get", "HotCorners"});
    EXPECT_EQ(got.output, "false\n");
    // The whole file is parsed, and each of its nine million values takes 24 bytes, twice while their array grows.
    expectPeakBelow(got, 512 * megabyte);
    expectPeakBelow(ctl.run({"show"}), 512 * megabyte);
    // Written with a line for each value, it would be more than is read.
    const std::uintmax_t before = fs::file_size(phone.settingsFile());
    const Outcome set = ctl.run({"set", "HotCorners", "on"});
    expectFailure(set, 1, "of a file that holds more than 67108864 nothing is read; the old file is left as it is");
    expectPeakBelow(set, 1024 * megabyte);
    EXPECT_EQ(fs::file_size(phone.settingsFile()), before);
    EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "false\n");
}

// Each array holds the one before it twice.
platform::Value doubled(int times) {
    platform::Value value = true;
    for (int time = 0; time < times; ++time)
        value = platform::Array{value, value};
    return value;
}

std::string binarySettings(const platform::Dictionary& settings) {
    return *platform::writeBinaryPropertyList(settings).bytes;
}

TEST_F(AttackingPhone, settingsThatUnfoldWithoutEndAreToldBySize) {
    platform::Dictionary settings;
    const json known = ctl.runForJson({"list", "--json"});
    for (const json& setting : known)
        settings.set(setting["key"].get<std::string>(), doubled(30));
    const std::string bytes = binarySettings(settings);
    ASSERT_LT(bytes.size(), 8192U);
    writeText(phone.settingsFile(), bytes);

    const Outcome listed = ctl.run({"list", "--json"});
    EXPECT_EQ(listed.status, 0);
    expectPeakBelow(listed, 64 * megabyte);
    const json settingsNow = json::parse(listed.output);
    EXPECT_EQ(settingsNow.size(), known.size());
    for (const json& setting : settingsNow)
        EXPECT_EQ(setting["value"], "(2 elements)") << setting["key"];
    const Outcome driven = ctl.run({"drive"}, "{\"do\":\"get\",\"key\":\"HotCorners\"}\n");
    EXPECT_EQ(driven.output, "{\"kind\":\"array\",\"ok\":true,\"value\":\"(2 elements)\"}\n");
    expectPeakBelow(driven, 64 * megabyte);
}

// What one value may unfold to, many of them together may not.
TEST_F(AttackingPhone, settingsThatUnfoldAreToldBySizeOnceTheAnswerIsFull) {
    constexpr int times = 15;
    platform::Dictionary settings;
    const json known = ctl.runForJson({"list", "--json"});
    for (const json& setting : known)
        settings.set(setting["key"].get<std::string>(), doubled(times));
    writeText(phone.settingsFile(), binarySettings(settings));
    const Outcome listed = ctl.run({"list", "--json"});
    EXPECT_EQ(listed.status, 0);
    expectPeakBelow(listed, 64 * megabyte);
    const json settingsNow = json::parse(listed.output);
    json whole = true;
    for (int time = 0; time < times; ++time)
        whole = json::array({whole, whole});
    EXPECT_EQ(settingsNow.front()["value"], whole);
    for (std::size_t number = 1; number < settingsNow.size(); ++number)
        EXPECT_EQ(settingsNow[number]["value"], "(2 elements)") << settingsNow[number]["key"];
}

TEST_F(AttackingPhone, textThatIsRepeatedWithoutEndIsToldBySize) {
    const platform::Value text(std::string(megabyte, 'x'));
    writeText(phone.settingsFile(), binarySettings({{"HotCorners", platform::Array(2000, text)},
                                                    {"QuickSwitcher", platform::Array(3, text)}}));
    const Outcome listed = ctl.run({"list", "--json"});
    EXPECT_EQ(listed.status, 0);
    expectPeakBelow(listed, 128 * megabyte);
    const json settings = json::parse(listed.output);
    const auto corners = std::ranges::find(settings, "HotCorners", [](const json& setting) { return setting["key"]; });
    ASSERT_NE(corners, settings.end());
    EXPECT_EQ((*corners)["value"], "(2000 elements)");
}

TEST_F(AttackingPhone, aHundredThousandApplicationsAreListed) {
    constexpr int count = 100'000;
    for (int number = 0; number < count; ++number) {
        const std::string name = std::to_string(number);
        const fs::path folder = phone.folder + containers + "/" + name + "/A.app";
        fs::create_directories(folder);
        std::ofstream(folder / "Info.plist") << infoOf("example." + name);
    }
    const Outcome outcome = ctl.run({"show", applicationsPage, "--verbose"});
    expectDone(outcome);
    EXPECT_GT(std::ranges::count(outcome.output, '\n'), count);
    expectPeakBelow(outcome, 512 * megabyte);
}

TEST_F(AttackingPhone, aFolderOfTooManyEntriesIsPassedOver) {
    constexpr int tooMany = (1 << 18) + 1;
    fs::create_directories(phone / "Applications");
    for (int number = 0; number < tooMany; ++number)
        ASSERT_EQ(::symlink("x", (phone / "Applications/" + std::to_string(number) + ".app").c_str()), 0);
    const Outcome outcome = ctl.run({"show", applicationsPage, "--verbose"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors,
              "trivel3ctl: skipped /Applications: it cannot be listed, or has more than 262144 entries\n");
    expectPeakBelow(outcome, 128 * megabyte);
}

TEST_F(AttackingPhone, aTreeOfLinksToItselfComesToAnEnd) {
    fs::create_directories(phone / "var/mobile/Applications");
    for (int number = 0; number < 1500; ++number) {
        const std::string place = phone / "var/mobile/Applications/" + std::to_string(number);
        fs::create_directory_symlink(number % 2 == 0 ? "." : "../Applications", place);
        fs::create_directory_symlink("/var/mobile/Applications", place + ".app");
    }
    const Outcome outcome = ctl.run({"show", applicationsPage, "--verbose"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("this and what comes after it is not looked at"));
    expectPeakBelow(outcome, 256 * megabyte);
}

// Each says that it is large, is small, and takes long to find out that its last row is missing.
TEST_F(AttackingPhone, iconsThatTakeLongToDecodeComeToAnEnd) {
    writeText(phone / "bomb.png", pictureWithoutItsLastRow(4096));
    for (int number = 0; number < 2000; ++number) {
        const std::string folder = phone / "Applications/" + std::to_string(number) + ".app";
        writeText(folder + "/Info.plist", infoOf("example." + std::to_string(number),
                                                 "<key>CFBundleIconFiles</key><array><string>Icon</string></array>"));
        fs::create_symlink("/bomb.png", folder + "/Icon.png");
    }
    const Outcome outcome = ctl.run({"show", applicationsPage, "--verbose"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("it is a damaged picture"));
    EXPECT_THAT(outcome.errors, HasSubstr("no more is decoded for icons"));
    expectPeakBelow(outcome, 256 * megabyte);
}

}  // namespace
}  // namespace terminal_test
