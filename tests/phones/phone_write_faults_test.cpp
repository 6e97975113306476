// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

#include "tests/kit/forked.h"
#include "tests/kit/phone.h"
#include "tests/kit/watched_calls.h"

namespace {

namespace fs = std::filesystem;
using kit::openPhone;
using kit::Phone;
using kit::readText;
using kit::settingsName;
using kit::settingsPath;
using kit::WatchedCalls;
using kit::writeText;
using testing::ElementsAre;
using testing::HasSubstr;

void makeOldFile(const Phone& phone) {
    writeText(phone.settingsFile(), "old");
    fs::permissions(phone.settingsFile(), fs::perms{0640});
    // Without the right to give files away the write has no owner to keep; the rest is the same.
    (void)!::chown(phone.settingsFile().c_str(), 501, 502);
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
        EXPECT_EQ(kit::replaceFile(files, "/file", "new"), "cannot write /file: " + text);
        EXPECT_EQ(readText(phone / "file"), "old");
        EXPECT_THAT(kit::namesIn(phone.folder), ElementsAre("file"));
    }
}

// On a file system that is a program, one that another program's renaming replaces is not there for a moment.
TEST(PhoneWriteFaults, takeNoFileThatIsBeingReplacedForOneThatIsMissing) {
    const Phone phone;
    makeOldFile(phone);
    bool missing = false;
    WatchedCalls calls{[&](const std::string& call, std::size_t) {
        return call == "inspect" && std::exchange(missing, false) ? ENOENT : 0;
    }};
    auto files = openPhone(phone.folder, calls);
    missing = true;
    const auto changed = files.changeFile(settingsPath, [](std::optional<std::string_view> old) {
        return platform::NewContent{std::string(old.value_or("nothing")) + ", and new"};
    });
    EXPECT_TRUE(changed);
    EXPECT_FALSE(missing);
    EXPECT_EQ(readText(phone.settingsFile()), "old, and new");
}

// A mount answers so when another program's renaming comes between the finding of a name and its use.
TEST(PhoneWriteFaults, areNotMadeOfNamesThatAreStaleForAMoment) {
    for (const std::string stale : {"openInRoot", "statusIn", "inspect", "openIn", "rename"}) {
        SCOPED_TRACE(stale);
        const Phone phone;
        makeOldFile(phone);
        std::size_t times = 0;
        WatchedCalls calls{[&](const std::string& call, std::size_t) {
            return call == stale && times > 0 && times-- > 0 ? ESTALE : 0;
        }};
        auto files = openPhone(phone.folder, calls);
        times = 3;
        EXPECT_EQ(kit::replaceFile(files, settingsPath, "new"), "");
        EXPECT_EQ(readText(phone.settingsFile()), "new");
        times = 1000;
        EXPECT_THAT(kit::replaceFile(files, settingsPath, "newer"), HasSubstr("Stale file handle"));
        EXPECT_EQ(readText(phone.settingsFile()), "new");
    }
}

// A new file that the add-on cannot read would be a lost one.
TEST(PhoneWriteFaults, leaveNoNewFileWithAnothersOwner) {
    const Phone phone;
    makeOldFile(phone);
    if (kit::ownerOf(phone.settingsFile()) == ::geteuid()) GTEST_SKIP() << "only a superuser has an owner to keep";
    for (const int error : {EIO, ENOSPC, EDQUOT, EROFS}) {
        bool armed = false;
        WatchedCalls calls{
            [&](const std::string& call, std::size_t) { return armed && call == "changeOwner" ? error : 0; }};
        auto files = openPhone(phone.folder, calls);
        armed = true;
        EXPECT_THAT(kit::replaceFile(files, settingsPath, "new"),
                    HasSubstr("cannot give the temporary file beside it its owner"));
        EXPECT_EQ(readText(phone.settingsFile()), "old");
        EXPECT_EQ(kit::ownerOf(phone.settingsFile()), 501U);
    }
}

// File systems without owners or permissions can be written all the same.
TEST(PhoneWriteFaults, areNotMadeOfOwnersAndPermissionsThatCannotBe) {
    for (const std::string refused : {"changeOwner", "changeMode"}) {
        for (const int error : {EPERM, EACCES, ENOTSUP, ENOSYS, EINVAL, EOVERFLOW}) {
            const Phone phone;
            makeOldFile(phone);
            WatchedCalls calls{[&](const std::string& call, std::size_t) { return call == refused ? error : 0; }};
            EXPECT_EQ(kit::replaceFile(openPhone(phone.folder, calls), settingsPath, "new"), "");
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
    EXPECT_THAT(kit::replaceFile(files, "/file", "new"), HasSubstr("may not outlast a crash: Input/output error"));
    EXPECT_EQ(readText(phone / "file"), "new");
    EXPECT_THAT(kit::namesIn(phone.folder), ElementsAre("file"));
}

TEST(PhoneWriteFaults, doNotAriseWhereFoldersCannotBeSynchronised) {
    const Phone phone;
    int synchronised = 0;
    WatchedCalls calls{[&](const std::string& call, std::size_t) {
        return call == "synchronise" && ++synchronised == 2 ? EINVAL : 0;
    }};
    EXPECT_EQ(kit::replaceFile(openPhone(phone.folder, calls), "/file", "new"), "");
}

TEST(PhoneWriteFaults, endAWriteThatMakesNoProgress) {
    struct NoProgress : hosts::FileCalls {
        ssize_t write(int, const void*, std::size_t) override { return 0; }
    } calls;
    const Phone phone;
    writeText(phone / "file", "old");
    auto files = openPhone(phone.folder, calls);
    EXPECT_THAT(kit::replaceFile(files, "/file", "new"), HasSubstr("No space left on device"));
    EXPECT_EQ(readText(phone / "file"), "old");
}

// The real thing: a process that may make no file larger than some bytes.
TEST(PhoneWriteFaults, ofARealLimitLeaveTheOldFile) {
    const Phone phone;
    writeText(phone / "file", "old");
    const int status = kit::runForked([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1000, 1000};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
        auto files = openPhone(phone.folder);
        return kit::replaceFile(files, "/file", std::string(5000, 'x')).find("File too large") != std::string::npos ? 0
                                                                                                                    : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readText(phone / "file"), "old");
    EXPECT_THAT(kit::namesIn(phone.folder), ElementsAre("file"));
}

TEST(PhoneWriteFaults, ofMissingDescriptorsLeaveTheOldFile) {
    const Phone phone;
    writeText(phone / "file", "old");
    for (rlim_t spare = 0; spare < 5; ++spare) {
        const int status = kit::runForked([&] {
            auto files = openPhone(phone.folder);
            const rlim_t next = static_cast<rlim_t>(::dup(0));
            ::close(static_cast<int>(next));
            const rlimit limit{next + spare, next + spare};
            if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) return 2;
            const bool written = kit::replaceFile(files, "/file", "new").empty();
            return written == (spare >= 3) ? 0 : 1;
        });
        EXPECT_EQ(status, 0) << spare;
        EXPECT_EQ(readText(phone / "file"), spare >= 3 ? "new" : "old");
        EXPECT_THAT(kit::namesIn(phone.folder), ElementsAre("file"));
    }
}

}  // namespace
