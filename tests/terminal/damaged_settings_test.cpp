// SPDX-License-Identifier: MIT
// A settings file that cannot be read as one reads as nothing: the page shows the defaults, and a
// write puts a new file in its place wherever the file system lets it.
#include <sys/stat.h>

#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

const std::string switchedOff =
    settingsOf({{"HotCorners", "<false/>"}, {"MultiCenter", "<false/>"}, {"QuickSwitcher", "<false/>"}});

struct DamagedSettings : testing::Test {
    DamagedSettings() {
        ctl.usePhone(phone.folder);
        fs::create_directories(phone.preferencesFolder());
    }

    static void expectSwitches(const json& answer, bool on) {
        for (const char* label : {"Multi-Center", "Quick Switcher", "Hot Corners"})
            EXPECT_EQ(rowLabelled(answer, label).at("on"), on) << label;
    }

    // Whatever lies at the settings file's place.
    void expectReadsAsNothing() {
        Drive drive(ctl);
        expectSwitches(drive.show(), true);
        EXPECT_EQ(drive.send({{"do", "get"}, {"key", "AlbumArtworkAutoDisplay"}}).at("value"), 6);
        EXPECT_EQ(ctl.run({"get", "MultiCenter"}).output, "true\n");
        for (const json& setting : ctl.runForJson({"list", "--json"}))
            EXPECT_EQ(setting.at("stored"), false) << setting;
    }

    void expectWriteReplacesIt() {
        expectDone(ctl.run({"set", "HotCorners", "off"}));
        expectWritten();
    }

    // What was there is kept, and the user is told where.
    void expectWriteKeepsItsContents(std::string_view contents) {
        const Outcome outcome = ctl.run({"set", "HotCorners", "off"});
        EXPECT_EQ(outcome.status, 0);
        const auto kept = namesIn(ctl.folder() / "state/trivel3/kept");
        ASSERT_EQ(kept.size(), 1U) << outcome.errors;
        const std::string file = ctl.folder() / "state/trivel3/kept/" + kept[0];
        EXPECT_TRUE(readText(file) == contents);
        EXPECT_THAT(outcome.errors, testing::EndsWith("; what it held is kept in " + file + "\n"));
        expectWritten();
    }

    void expectWritten() {
        EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(phone.settingsFile())));
        EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
        EXPECT_THAT(namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
    }

    void expectDefaultsAndReplacement(std::string_view contents) {
        writeSettings(phone, contents);
        expectReadsAsNothing();
        contents.empty() ? expectWriteReplacesIt() : expectWriteKeepsItsContents(contents);
    }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(DamagedSettings, emptyFile) {
    expectDefaultsAndReplacement("");
}

TEST_F(DamagedSettings, text) {
    expectDefaultsAndReplacement("MultiCenter = false\n");
}

TEST_F(DamagedSettings, arrayAtTheRoot) {
    expectDefaultsAndReplacement(propertyList("<array><string>MultiCenter</string><false/></array>"));
}

TEST_F(DamagedSettings, booleanAtTheRoot) {
    expectDefaultsAndReplacement(propertyList("<false/>"));
}

TEST_F(DamagedSettings, deeplyNestedXml) {
    std::string deep = "<plist><dict><key>MultiCenter</key><false/><key>Deep</key>";
    for (int i = 0; i < 200'000; ++i)
        deep += "<array>";
    expectDefaultsAndReplacement(deep);
}

TEST_F(DamagedSettings, undeclaredUtf16) {
    std::string wide;
    for (const char byte : switchedOff)
        wide += {byte, '\0'};
    expectDefaultsAndReplacement(wide);
}

TEST_F(DamagedSettings, unknownEncoding) {
    std::string strange = switchedOff;
    strange.replace(strange.find("UTF-8"), 5, "KOI-7");
    expectDefaultsAndReplacement(strange);
}

TEST_F(DamagedSettings, textThatIsNoUtf8) {
    std::string broken = switchedOff;
    broken.replace(broken.find("QuickSwitcher"), 1, "\xFF");
    expectDefaultsAndReplacement(broken);
}

// Almost the same bytes as in the tests of damage: they must be read, or those tests say nothing.
TEST_F(DamagedSettings, soundFileIsRead) {
    writeSettings(phone, switchedOff);
    Drive drive(ctl);
    expectSwitches(drive.show(), false);
}

TEST_F(DamagedSettings, aGigabyteOfZeros) {
    writeSettings(phone, "");
    fs::resize_file(phone.settingsFile(), std::uintmax_t{1} << 30);
    expectReadsAsNothing();
    const Outcome outcome = ctl.run({"set", "HotCorners", "off"});
    EXPECT_EQ(outcome.status, 0);
    const auto names = namesIn(phone.preferencesFolder());
    ASSERT_EQ(names.size(), 2U);
    EXPECT_THAT(outcome.errors, testing::HasSubstr("; what it was is now"));
    EXPECT_THAT(outcome.errors, testing::HasSubstr(names[1]));
    EXPECT_EQ(fs::file_size(phone.preferencesFolder() + "/" + names[1]), std::uintmax_t{1} << 30);
    fs::remove(phone.preferencesFolder() + "/" + names[1]);
    expectWritten();
}

TEST_F(DamagedSettings, fifo) {
    ASSERT_EQ(::mkfifo(phone.settingsFile().c_str(), 0644), 0);
    expectReadsAsNothing();
    expectWriteReplacesIt();
}

TEST_F(DamagedSettings, linkToNowhere) {
    fs::create_symlink("nowhere.plist", phone.settingsFile());
    expectReadsAsNothing();
    expectWriteReplacesIt();
}

TEST_F(DamagedSettings, linkToItself) {
    fs::create_symlink(settingsName, phone.settingsFile());
    expectReadsAsNothing();
    expectWriteReplacesIt();
}

// The file outside would say that everything is off.
TEST_F(DamagedSettings, linksOutOfThePhone) {
    const std::string outside = phone.around / "outside.plist";
    writeText(outside, switchedOff);
    for (const std::string& target : {outside, std::string("../../../../../outside.plist")}) {
        SCOPED_TRACE(target);
        fs::remove(phone.settingsFile());
        fs::create_symlink(target, phone.settingsFile());
        ASSERT_TRUE(fs::exists(phone.settingsFile()));
        expectReadsAsNothing();
        expectWriteReplacesIt();
        EXPECT_EQ(readText(outside), switchedOff);
    }
}

TEST_F(DamagedSettings, folderOutsideReachedThroughALinkStaysUntouched) {
    const std::string outside = phone.around / "outside";
    writeText(outside + "/" + settingsName, switchedOff);
    fs::remove(phone.preferencesFolder());
    fs::create_directory_symlink(outside, phone.preferencesFolder());
    expectReadsAsNothing();
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 1);
    EXPECT_EQ(readText(outside + "/" + settingsName), switchedOff);
    EXPECT_THAT(namesIn(outside), ElementsAre(settingsName));
}

TEST_F(DamagedSettings, folderInPlaceOfTheFileStays) {
    fs::create_directory(phone.settingsFile());
    expectReadsAsNothing();
    expectFailure(ctl.run({"set", "HotCorners", "off"}), 1, "Is a directory");
    EXPECT_TRUE(fs::is_empty(phone.settingsFile()));
}

TEST_F(DamagedSettings, fileCutAtAnyByte) {
    const std::size_t end = switchedOff.find("</plist>") + std::string("</plist>").size();
    Drive drive(ctl);
    for (std::size_t cut = 0; cut <= switchedOff.size(); ++cut) {
        SCOPED_TRACE(cut);
        writeSettings(phone, switchedOff.substr(0, cut));
        expectSwitches(drive.show(), cut < end);
    }
}

TEST_F(DamagedSettings, binaryFileCutAtAnyByte) {
    writeSettings(phone, switchedOff);
    expectDone(ctl.run({"plist", "convert", "binary1", phone.settingsFile(), "-o", phone.settingsFile()}));
    const std::string whole = readSettings(phone);
    Drive drive(ctl);
    for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
        SCOPED_TRACE(cut);
        writeSettings(phone, whole.substr(0, cut));
        expectSwitches(drive.show(), cut < whole.size());
    }
}

TEST_F(DamagedSettings, binaryFileWithAnyByteChanged) {
    writeSettings(phone, switchedOff);
    expectDone(ctl.run({"plist", "convert", "binary1", phone.settingsFile(), "-o", phone.settingsFile()}));
    const std::string whole = readSettings(phone);
    Drive drive(ctl);
    for (std::size_t position = 0; position < whole.size(); ++position) {
        SCOPED_TRACE(position);
        std::string changed = whole;
        changed[position] = static_cast<char>(changed[position] ^ 0x55);
        writeSettings(phone, changed);
        EXPECT_EQ(drive.show().at("ok"), true);
    }
}

}  // namespace
}  // namespace terminal_test
