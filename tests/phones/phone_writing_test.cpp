// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/kit/phone.h"
#include "tests/kit/watched_calls.h"

namespace {

namespace fs = std::filesystem;
using kit::openPhone;
using kit::Phone;
using kit::readText;
using kit::settingsName;
using kit::settingsPath;
using kit::writeText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct stat statusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status;
}

// Restores the process's file-creation mask at the end of a test.
class Umask {
public:
    explicit Umask(mode_t mask) : _before(::umask(mask)) {}
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;
    ~Umask() { ::umask(_before); }

private:
    mode_t _before;
};

TEST(PhoneWriting, makesTheFileWithExactlyItsContents) {
    const Phone phone;
    auto files = openPhone(phone.folder);
    for (const std::size_t size : {0U, 1U, 4096U, 3'000'000U}) {
        EXPECT_EQ(kit::replaceFile(files, settingsPath, std::string(size, 'x')), "");
        EXPECT_EQ(readText(phone.settingsFile()), std::string(size, 'x'));
    }
    EXPECT_THAT(kit::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

TEST(PhoneWriting, makesMissingFoldersForAnybodyToReadWhateverTheMask) {
    const Umask strict{0077};
    const Phone phone;
    EXPECT_EQ(kit::replaceFile(openPhone(phone.folder), settingsPath, "new"), "");
    for (const char* folder : {"var", "var/mobile", "var/mobile/Library", kit::preferences}) {
        EXPECT_EQ(statusOf(phone / folder).st_mode & 07777, 0755U) << folder;
    }
    EXPECT_EQ(statusOf(phone.settingsFile()).st_mode & 07777, 0644U);
}

TEST(PhoneWriting, toleratesSuperfluousSlashesAndDots) {
    const Phone phone;
    EXPECT_EQ(kit::replaceFile(openPhone(phone.folder), "//a///./b//file", "new"), "");
    EXPECT_EQ(readText(phone / "a/b/file"), "new");
}

TEST(PhoneWriting, keepsThePermissionsOfTheOldFile) {
    const Phone phone;
    auto files = openPhone(phone.folder);
    for (const mode_t mode : {0600U, 0640U, 0664U, 0444U, 0777U}) {
        writeText(phone.settingsFile(), "old");
        ASSERT_EQ(::chmod(phone.settingsFile().c_str(), mode), 0);
        EXPECT_EQ(kit::replaceFile(files, settingsPath, "new"), "");
        EXPECT_EQ(statusOf(phone.settingsFile()).st_mode & 07777, mode);
        fs::remove(phone.settingsFile());
    }
}

TEST(PhoneWriting, keepsTheOwnerOfTheOldFileWhereItMay) {
    const Phone phone;
    writeText(phone.settingsFile(), "old");
    const bool mayGiveAway = ::chown(phone.settingsFile().c_str(), 501, 502) == 0;
    const auto before = statusOf(phone.settingsFile());
    EXPECT_EQ(before.st_uid, mayGiveAway ? 501 : ::getuid());
    EXPECT_EQ(kit::replaceFile(openPhone(phone.folder), settingsPath, "new"), "");
    const auto after = statusOf(phone.settingsFile());
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_NE(after.st_ino, before.st_ino);
}

TEST(PhoneWriting, leavesTheOldContentToThoseWhoHaveItOpen) {
    const Phone phone;
    writeText(phone.settingsFile(), "old");
    std::ifstream reader{phone.settingsFile()};
    EXPECT_EQ(kit::replaceFile(openPhone(phone.folder), settingsPath, "new"), "");
    EXPECT_EQ((std::string{std::istreambuf_iterator<char>{reader}, {}}), "old");
}

TEST(PhoneWriting, makesTheContentDurableBeforeItsNameAndThenTheName) {
    const Phone phone;
    writeText(phone.settingsFile(), "old");
    kit::WatchedCalls calls;
    auto files = openPhone(phone.folder, calls);
    calls.forget();
    EXPECT_EQ(kit::replaceFile(files, settingsPath, "new"), "");
    std::vector<std::string> order;
    for (const auto& call : calls.made()) {
        if (call == "write" || call == "changeMode" || call == "synchronise" || call == "rename") order.push_back(call);
    }
    EXPECT_THAT(order, ElementsAre("write", "changeMode", "synchronise", "rename", "synchronise"));
}

TEST(PhoneWriting, makesNewFoldersDurableToo) {
    const Phone phone;
    kit::WatchedCalls calls;
    auto files = openPhone(phone.folder, calls);
    calls.forget();
    EXPECT_EQ(kit::replaceFile(files, "/a/b/file", "new"), "");
    std::vector<std::string> order;
    for (const auto& call : calls.made()) {
        if (call == "makeFolder" || call == "synchronise" || call == "rename") order.push_back(call);
    }
    EXPECT_THAT(order, ElementsAre("makeFolder", "synchronise", "makeFolder", "synchronise", "synchronise", "rename",
                                   "synchronise"));
}

TEST(PhoneWriting, putsAFileInThePlaceOfAFifo) {
    const Phone phone;
    ASSERT_EQ(::mkfifo((phone / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(kit::replaceFile(openPhone(phone.folder), "/fifo", "new"), "");
    EXPECT_EQ(readText(phone / "fifo"), "new");
    EXPECT_EQ(statusOf(phone / "fifo").st_mode, S_IFREG | 0644U);
}

TEST(PhoneWriting, doesNotReplaceAFolder) {
    const Phone phone;
    fs::create_directories(phone / "folder");
    auto files = openPhone(phone.folder);
    for (const char* path : {"/folder", "/folder/", "/folder/.", "/folder/..", "/", ""}) {
        EXPECT_THAT(kit::replaceFile(files, path, "new"), HasSubstr("Is a directory")) << path;
    }
    EXPECT_THAT(kit::namesIn(phone / "folder"), IsEmpty());
    EXPECT_THAT(kit::namesIn(phone.folder), ElementsAre("folder"));
}

TEST(PhoneWriting, failsWhereAFileStandsForAFolder) {
    const Phone phone;
    writeText(phone / "var", "a file");
    auto files = openPhone(phone.folder);
    EXPECT_EQ(kit::replaceFile(files, settingsPath, "new"),
              "cannot write " + std::string{settingsPath} + ": cannot open its folder: Not a directory");
    EXPECT_EQ(readText(phone / "var"), "a file");
}

TEST(PhoneWriting, failsWhereALinkToNowhereStandsForAFolder) {
    const Phone phone;
    fs::create_symlink("/missing", phone / "var");
    auto files = openPhone(phone.folder);
    EXPECT_THAT(kit::replaceFile(files, settingsPath, "new"), HasSubstr("No such file or directory"));
    EXPECT_THAT(kit::namesIn(phone.folder), ElementsAre("var"));
}

TEST(PhoneWriting, refusesPathsThatNoFileCanHave) {
    const Phone phone;
    auto files = openPhone(phone.folder);
    EXPECT_NE(kit::replaceFile(files, std::string_view{"/file\0.plist", 12}, "new"), "");
    EXPECT_NE(kit::replaceFile(files, "/" + std::string(256, 'x'), "new"), "");
    EXPECT_NE(kit::replaceFile(files, "/" + std::string(5000, 'x') + "/file", "new"), "");
    EXPECT_THAT(kit::namesIn(phone.folder), IsEmpty());
}

TEST(PhoneWriting, writesNamesAndPathsOfTheGreatestLength) {
    const Phone phone;
    auto files = openPhone(phone.folder);
    const std::string name(255, 'x');
    EXPECT_EQ(kit::replaceFile(files, "/" + name, "new"), "");
    EXPECT_EQ(readText(phone / name), "new");
    std::string deep;
    while (deep.size() < 3800)
        deep += "/" + std::string(200, 'd');
    EXPECT_EQ(kit::replaceFile(files, deep + "/file", "new"), "");
    std::string contents;
    EXPECT_TRUE(files.readFile(deep + "/file", contents));
    EXPECT_EQ(contents, "new");
}

TEST(PhoneWriting, clearsTheLastErrorWhenAWriteWorks) {
    const Phone phone;
    auto files = openPhone(phone.folder);
    EXPECT_NE(kit::replaceFile(files, "/", "new"), "");
    EXPECT_EQ(kit::replaceFile(files, "/file", "new"), "");
}

TEST(PhoneWriting, removesWhatDeadWritersOfTheSameFileLeft) {
    const Phone phone;
    const std::string abandoned = "." + std::string{settingsName} + ".abc234.tmp";
    writeText(phone.preferencesFolder() + "/" + abandoned, "half of a");
    EXPECT_EQ(kit::replaceFile(openPhone(phone.folder), settingsPath, "new"), "");
    EXPECT_THAT(kit::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

TEST(PhoneWriting, leavesEverythingElseInTheFolderAlone) {
    const Phone phone;
    const std::string settings{settingsName};
    const std::vector<std::string> others{"." + settings + ".abc.tmp",    "." + settings + ".abc234.tmp2",
                                          "." + settings + ".ABC234.tmp", settings + ".abc234.tmp",
                                          ".other.plist.abc234.tmp",      "." + settings,
                                          "." + settings + ".abc23/.tmp"};
    for (const auto& other : others)
        writeText(phone.preferencesFolder() + "/" + other, "kept");
    const std::string lookAlike = phone.preferencesFolder() + "/." + settings + ".folder.tmp";
    fs::create_directory(lookAlike);
    const std::string link = phone.preferencesFolder() + "/." + settings + ".linked.tmp";
    fs::create_symlink(phone.preferencesFolder() + "/." + settings, link);
    EXPECT_EQ(kit::replaceFile(openPhone(phone.folder), settingsPath, "new"), "");
    for (const auto& other : others)
        EXPECT_EQ(readText(phone.preferencesFolder() + "/" + other), "kept") << other;
    EXPECT_TRUE(fs::is_directory(lookAlike));
    EXPECT_TRUE(fs::is_symlink(link));
}

// Runs a write of somebody else's, who takes no turns, in the middle of ours.
void expectBothWritesToWork(const std::string& interruptedBefore) {
    const Phone phone;
    kit::WatchedCalls withoutLocks{[](const std::string& call, std::size_t) { return call == "lock" ? ENOLCK : 0; }};
    auto other = openPhone(phone.folder, withoutLocks);
    bool interrupted = false;
    kit::WatchedCalls calls{[&](const std::string& call, std::size_t) {
        if (call == interruptedBefore && !interrupted) {
            interrupted = true;
            EXPECT_EQ(kit::replaceFile(other, "/file", "other"), "");
            EXPECT_EQ(readText(phone / "file"), "other");
        }
        return 0;
    }};
    auto files = openPhone(phone.folder, calls);
    EXPECT_EQ(kit::replaceFile(files, "/file", "ours"), "");
    EXPECT_TRUE(interrupted);
    EXPECT_EQ(readText(phone / "file"), "ours");
    EXPECT_THAT(kit::namesIn(phone.folder), ElementsAre("file")) << interruptedBefore;
}

TEST(PhoneWriting, twoWritersDoNotDisturbEachOther) {
    for (const char* call : {"openIn", "lock", "status", "write", "synchronise", "rename"})
        expectBothWritesToWork(call);
}

TEST(PhoneWriting, takesAnotherNameWhenTheFirstIsTaken) {
    const Phone phone;
    int taken = 5;
    kit::WatchedCalls calls{
        [&](const std::string& call, std::size_t) { return call == "openIn" && taken-- > 0 ? EEXIST : 0; }};
    EXPECT_EQ(kit::replaceFile(openPhone(phone.folder, calls), "/file", "new"), "");
    EXPECT_EQ(readText(phone / "file"), "new");
}

}  // namespace
