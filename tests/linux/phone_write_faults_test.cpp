// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <set>

#include "forked.h"
#include "phone.h"
#include "watched_calls.h"

namespace {

namespace fs = std::filesystem;
using test::openPhone;
using test::Phone;
using test::readText;
using test::settingsName;
using test::settingsPath;
using test::temporariesIn;
using test::WatchedCalls;
using test::writeText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A state in which a write may find the phone. Where the old content and the new one can be seen is
// told by `file`, relative to the phone's folder.
struct Situation {
    const char* name;
    std::function<void(const Phone&)> prepare;
    std::string file = std::string{settingsPath}.substr(1);
    std::string oldContent = "old";
};

void makeOldFile(const Phone& phone) {
    writeText(phone.settingsFile(), "old");
    fs::permissions(phone.settingsFile(), fs::perms{0640});
    // Without the right to give files away the write has no owner to keep; the rest is the same.
    (void)!::chown(phone.settingsFile().c_str(), 501, 502);
}

void makeLinkedFile(const Phone& phone) {
    writeText(phone / "store/real", "old");
    fs::create_directories(phone.preferencesFolder());
    fs::create_symlink("/store/real", phone.settingsFile());
}

void makeAbandonedTemporary(const Phone& phone) {
    makeOldFile(phone);
    writeText(phone.preferencesFolder() + "/." + settingsName + ".abc234.tmp", "half of a");
}

std::vector<Situation> situations() {
    return {{"old file", makeOldFile},
            {"abandoned temporary", makeAbandonedTemporary},
            {"empty phone", [](const Phone&) {}, std::string{settingsPath}.substr(1), "(no file)"},
            {"linked file", makeLinkedFile, "store/real"}};
}

std::vector<std::string> callsOfAWrite(const Situation& situation) {
    const Phone phone;
    situation.prepare(phone);
    WatchedCalls calls;
    auto files = openPhone(phone.folder, calls);
    calls.forget();
    EXPECT_TRUE(files.writeFileAtomically(settingsPath, "new"));
    EXPECT_EQ(readText(phone / situation.file), "new");
    return calls.made();
}

// The calls without which no write can be called done. The others make a write tidier or keep
// attributes.
bool isEssential(const std::string& call) {
    static const std::set<std::string> essential{"openInRoot", "statusIn",    "readLink", "write",     "changeOwner",
                                                 "changeMode", "synchronise", "rename",   "makeFolder"};
    return essential.contains(call);
}

void expectWholeFileDespite(const Situation& situation, std::size_t failing, const std::string& call, int error) {
    SCOPED_TRACE(std::string{situation.name} + ": call " + std::to_string(failing) + " (" + call +
                 ") fails: " + std::generic_category().message(error));
    const Phone phone;
    situation.prepare(phone);
    bool armed = false;
    WatchedCalls calls{[&](const std::string&, std::size_t number) { return armed && number == failing ? error : 0; }};
    auto files = openPhone(phone.folder, calls);
    calls.forget();
    armed = true;
    const auto descriptors = test::openDescriptors();
    const bool written = files.writeFileAtomically(settingsPath, "new");
    armed = false;

    EXPECT_EQ(test::openDescriptors(), descriptors);
    EXPECT_EQ(files.lastError().empty(), written);
    const auto& made = calls.made();
    const bool renamed = std::find(made.begin(), made.begin() + static_cast<std::ptrdiff_t>(failing), "rename") !=
                         made.begin() + static_cast<std::ptrdiff_t>(failing);
    EXPECT_FALSE(isEssential(call) && written);
    std::string seen;
    EXPECT_EQ(openPhone(phone.folder).readFile(settingsPath, seen) ? seen : "(no file)",
              written || renamed ? "new" : situation.oldContent);
    if (call == "unlink" || call == "list" || call == "lock" || call == "status") {
        EXPECT_LE(temporariesIn(phone.folder), 1U);
    } else if (std::string_view{situation.name} != "abandoned temporary") {
        EXPECT_EQ(temporariesIn(phone.folder), 0U);
    }

    EXPECT_TRUE(files.writeFileAtomically(settingsPath, "newer")) << files.lastError();
    EXPECT_EQ(openPhone(phone.folder).readFile(settingsPath, seen) ? seen : "(no file)", "newer");
    EXPECT_EQ(temporariesIn(phone.folder), 0U);
}

TEST(PhoneWriteFaults, leaveTheOldFileOrTheNewOneWhicheverCallFails) {
    for (const auto& situation : situations()) {
        const auto calls = callsOfAWrite(situation);
        ASSERT_GT(calls.size(), 10U);
        for (std::size_t failing = 0; failing < calls.size(); ++failing) {
            for (const int error : {EIO, ENOSPC}) {
                expectWholeFileDespite(situation, failing, calls[failing], error);
            }
        }
    }
}

TEST(PhoneWriteFaults, areToldByFileStepAndReason) {
    const std::vector<std::tuple<std::string, int, std::string>> cases{
        {"openInRoot", EACCES, "cannot open its folder: Permission denied"},
        {"statusIn", EIO, "cannot look at it: Input/output error"},
        {"openIn", EROFS, "cannot make a temporary file beside it: Read-only file system"},
        {"write", ENOSPC, "cannot write the temporary file beside it: No space left on device"},
        {"changeMode", EIO, "cannot give the temporary file beside it its permissions: Input/output error"},
        {"synchronise", EDQUOT, "cannot make the temporary file beside it durable: Disk quota exceeded"},
        {"rename", EPERM, "cannot put the new file in its place: Operation not permitted"}};
    for (const auto& [failing, error, text] : cases) {
        const Phone phone;
        writeText(phone / "file", "old");
        bool armed = false;
        WatchedCalls calls{[&, failing = failing, error = error](const std::string& call, std::size_t) {
            return armed && call == failing ? error : 0;
        }};
        auto files = openPhone(phone.folder, calls);
        armed = true;
        EXPECT_FALSE(files.writeFileAtomically("/file", "new"));
        EXPECT_EQ(files.lastError(), "cannot write /file: " + text);
        EXPECT_EQ(readText(phone / "file"), "old");
        EXPECT_THAT(test::namesIn(phone.folder), ElementsAre("file"));
    }
}

// A new file that the add-on cannot read would be a lost one.
TEST(PhoneWriteFaults, leaveNoNewFileWithAnothersOwner) {
    const Phone phone;
    makeOldFile(phone);
    if (test::ownerOf(phone.settingsFile()) == ::geteuid()) GTEST_SKIP() << "only a superuser has an owner to keep";
    for (const int error : {EIO, ENOSPC, EDQUOT, EROFS}) {
        bool armed = false;
        WatchedCalls calls{
            [&](const std::string& call, std::size_t) { return armed && call == "changeOwner" ? error : 0; }};
        auto files = openPhone(phone.folder, calls);
        armed = true;
        EXPECT_FALSE(files.writeFileAtomically(settingsPath, "new"));
        EXPECT_THAT(files.lastError(), HasSubstr("cannot give the temporary file beside it its owner"));
        EXPECT_EQ(readText(phone.settingsFile()), "old");
        EXPECT_EQ(test::ownerOf(phone.settingsFile()), 501U);
    }
}

// File systems without owners or permissions can be written all the same.
TEST(PhoneWriteFaults, areNotMadeOfOwnersAndPermissionsThatCannotBe) {
    for (const std::string refused : {"changeOwner", "changeMode"}) {
        for (const int error : {EPERM, EACCES, ENOTSUP, ENOSYS, EINVAL, EOVERFLOW}) {
            const Phone phone;
            makeOldFile(phone);
            WatchedCalls calls{[&](const std::string& call, std::size_t) { return call == refused ? error : 0; }};
            EXPECT_TRUE(openPhone(phone.folder, calls).writeFileAtomically(settingsPath, "new"));
            EXPECT_EQ(readText(phone.settingsFile()), "new");
        }
    }
}

TEST(PhoneWriteFaults, ofTheFoldersDurabilityLeaveTheNewFileAndAreTold) {
    const Phone phone;
    writeText(phone / "file", "old");
    int synchronised = 0;
    WatchedCalls calls{
        [&](const std::string& call, std::size_t) { return call == "synchronise" && ++synchronised == 2 ? EIO : 0; }};
    auto files = openPhone(phone.folder, calls);
    EXPECT_FALSE(files.writeFileAtomically("/file", "new"));
    EXPECT_THAT(files.lastError(), HasSubstr("may not outlast a crash: Input/output error"));
    EXPECT_EQ(readText(phone / "file"), "new");
    EXPECT_THAT(test::namesIn(phone.folder), ElementsAre("file"));
}

TEST(PhoneWriteFaults, doNotAriseWhereFoldersCannotBeSynchronised) {
    const Phone phone;
    int synchronised = 0;
    WatchedCalls calls{[&](const std::string& call, std::size_t) {
        return call == "synchronise" && ++synchronised == 2 ? EINVAL : 0;
    }};
    EXPECT_TRUE(openPhone(phone.folder, calls).writeFileAtomically("/file", "new"));
}

// More signals than any number of attempts that is given up at.
TEST(PhoneWriteFaults, doNotComeFromSignalsHoweverMany) {
    for (const auto& situation : situations()) {
        const auto usual = callsOfAWrite(situation);
        for (const std::string& interrupted : std::set<std::string>{usual.begin(), usual.end()}) {
            if (interrupted == "close") continue;
            SCOPED_TRACE(std::string{situation.name} + ": " + interrupted);
            const Phone phone;
            situation.prepare(phone);
            int times = 0;
            bool armed = false;
            WatchedCalls calls{[&](const std::string& call, std::size_t) {
                return armed && call == interrupted && ++times <= 1000 ? EINTR : 0;
            }};
            auto files = openPhone(phone.folder, calls);
            armed = true;
            EXPECT_TRUE(files.writeFileAtomically(settingsPath, "new")) << files.lastError();
            EXPECT_GT(times, 1000);
            EXPECT_EQ(readText(phone / situation.file), "new");
            EXPECT_EQ(temporariesIn(phone.folder), 0U);
        }
    }
}

TEST(PhoneWriteFaults, doNotComeFromShortWrites) {
    struct ShortWrites : hosts::FileCalls {
        ssize_t write(int file, const void* bytes, std::size_t count) override {
            ++writes;
            return FileCalls::write(file, bytes, std::min<std::size_t>(count, 7));
        }
        int writes = 0;
    } calls;
    const Phone phone;
    const std::string text(700, 'x');
    EXPECT_TRUE(openPhone(phone.folder, calls).writeFileAtomically("/file", text + "end"));
    EXPECT_EQ(readText(phone / "file"), text + "end");
    EXPECT_EQ(calls.writes, 101);
}

TEST(PhoneWriteFaults, endAWriteThatMakesNoProgress) {
    struct NoProgress : hosts::FileCalls {
        ssize_t write(int, const void*, std::size_t) override { return 0; }
    } calls;
    const Phone phone;
    writeText(phone / "file", "old");
    auto files = openPhone(phone.folder, calls);
    EXPECT_FALSE(files.writeFileAtomically("/file", "new"));
    EXPECT_THAT(files.lastError(), HasSubstr("No space left on device"));
    EXPECT_EQ(readText(phone / "file"), "old");
}

TEST(PhoneWriteFaults, areMetHalfWayThroughTheContents) {
    struct FullDisk : hosts::FileCalls {
        ssize_t write(int file, const void* bytes, std::size_t count) override {
            if (room == 0) {
                errno = ENOSPC;
                return -1;
            }
            const auto written = FileCalls::write(file, bytes, std::min(count, room));
            room -= static_cast<std::size_t>(written);
            return written;
        }
        std::size_t room = 1000;
    } calls;
    const Phone phone;
    writeText(phone / "file", "old");
    EXPECT_FALSE(openPhone(phone.folder, calls).writeFileAtomically("/file", std::string(2000, 'x')));
    EXPECT_EQ(readText(phone / "file"), "old");
    EXPECT_THAT(test::namesIn(phone.folder), ElementsAre("file"));
}

// The real thing: a process that may make no file larger than some bytes.
TEST(PhoneWriteFaults, ofARealLimitLeaveTheOldFile) {
    const Phone phone;
    writeText(phone / "file", "old");
    const int status = test::runForked([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1000, 1000};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
        auto files = openPhone(phone.folder);
        const bool written = files.writeFileAtomically("/file", std::string(5000, 'x'));
        return !written && files.lastError().find("File too large") != std::string::npos ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readText(phone / "file"), "old");
    EXPECT_THAT(test::namesIn(phone.folder), ElementsAre("file"));
}

TEST(PhoneWriteFaults, ofMissingDescriptorsLeaveTheOldFile) {
    const Phone phone;
    writeText(phone / "file", "old");
    for (rlim_t spare = 0; spare < 3; ++spare) {
        const int status = test::runForked([&] {
            auto files = openPhone(phone.folder);
            const rlim_t next = static_cast<rlim_t>(::dup(0));
            ::close(static_cast<int>(next));
            const rlimit limit{next + spare, next + spare};
            if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) return 2;
            const bool written = files.writeFileAtomically("/file", "new");
            return written == (spare >= 2) ? 0 : 1;
        });
        EXPECT_EQ(status, 0) << spare;
        EXPECT_EQ(readText(phone / "file"), spare >= 2 ? "new" : "old");
        EXPECT_THAT(test::namesIn(phone.folder), ElementsAre("file"));
    }
}

}  // namespace
