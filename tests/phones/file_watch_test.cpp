// SPDX-License-Identifier: MIT
#include "hosts/phones/file_watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "hosts/phones/folder_phone.h"
#include "tests/kit/forked.h"
#include "tests/kit/phone.h"
#include "tests/kit/refused_openat2.h"

namespace {

using namespace std::chrono_literals;
using hosts::FileWatch;
using hosts::PhoneEvent;
using kit::Phone;
using kit::writeText;

bool isReady(int descriptor, std::chrono::milliseconds limit) {
    pollfd watched{descriptor, POLLIN, 0};
    return ::poll(&watched, 1, static_cast<int>(limit.count())) > 0;
}

class FileWatchTest : public testing::Test {
protected:
    FileWatchTest() { std::filesystem::create_directories(phone.preferencesFolder()); }

    /// The file that is told of next, within what a loaded machine may take; empty for none.
    std::string nextChange(FileWatch& watch, std::chrono::milliseconds limit = 10s) {
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (std::chrono::steady_clock::now() < deadline) {
            if (auto path = watch.nextChange()) return *path;
            if (!isReady(watch.descriptor(), limit)) break;
        }
        return {};
    }
    void takeAll(FileWatch& watch) {
        while (!nextChange(watch, 100ms).empty()) {
        }
    }

    Phone phone;
    hosts::PhoneFileSystem files = kit::openPhone(phone.folder);
};

TEST_F(FileWatchTest, tellsOfAFileThatComesChangesAndGoes) {
    FileWatch watch(files, {kit::settingsPath});
    EXPECT_EQ(watch.nextChange(), std::nullopt);
    writeText(phone.settingsFile(), "1");
    EXPECT_EQ(nextChange(watch), kit::settingsPath);
    takeAll(watch);
    writeText(phone.settingsFile(), "22");
    EXPECT_EQ(nextChange(watch), kit::settingsPath);
    takeAll(watch);
    std::filesystem::remove(phone.settingsFile());
    EXPECT_EQ(nextChange(watch), kit::settingsPath);
    takeAll(watch);
    EXPECT_FALSE(isReady(watch.descriptor(), 100ms));
}

TEST_F(FileWatchTest, tellsOfAChangeThatLeavesSizeAndTimesAsTheyWere) {
    writeText(phone.settingsFile(), "1");
    const auto before = std::filesystem::last_write_time(phone.settingsFile());
    FileWatch watch(files, {kit::settingsPath});
    std::ofstream(phone.settingsFile()) << "2";
    std::filesystem::last_write_time(phone.settingsFile(), before);
    EXPECT_EQ(nextChange(watch), kit::settingsPath);
}

TEST_F(FileWatchTest, waitsForFoldersThatAreNotThereYet) {
    std::filesystem::remove_all(phone / "var");
    FileWatch watch(files, {kit::settingsPath});
    std::filesystem::create_directories(phone.preferencesFolder());
    takeAll(watch);
    writeText(phone.settingsFile(), "1");
    EXPECT_EQ(nextChange(watch), kit::settingsPath);
}

TEST_F(FileWatchTest, tellsOfAReplacedFileAndOfTheFileThatHasTakenItsPlace) {
    writeText(phone.settingsFile(), "1");
    FileWatch watch(files, {kit::settingsPath});
    for (const char* contents : {"2", "3"}) {
        EXPECT_EQ(kit::replaceFile(files, kit::settingsPath, contents), "");
        EXPECT_EQ(nextChange(watch), kit::settingsPath);
        takeAll(watch);
    }
}

TEST_F(FileWatchTest, doesWithoutTheKernelsConfinedLookUps) {
    constexpr int noFilter = 2;
    const int status = kit::runForked([this] {
        if (!kit::refuseOpenat2(ENOSYS)) return noFilter;
        std::filesystem::create_directories(phone / "real");
        std::filesystem::remove_all(phone / "var");
        std::filesystem::create_symlink("real", phone / "var");
        FileWatch watch(files, {kit::settingsPath});
        for (const char* contents : {"1", "2"}) {
            writeText(phone.settingsFile(), contents);
            if (nextChange(watch) != kit::settingsPath) return 1;
            takeAll(watch);
        }
        return 0;
    });
    if (status == noFilter) GTEST_SKIP() << "no process can be kept from a system call here";
    EXPECT_EQ(status, 0);
}

TEST_F(FileWatchTest, ofAFolderPhoneStandsInItsEvents) {
    const auto opened = hosts::FolderPhone::open(phone.folder, "/no/such/module.so");
    ASSERT_TRUE(opened) << opened.error().text();
    const std::string paths[] = {kit::settingsPath};
    const auto events = (*opened)->observe(paths);
    EXPECT_TRUE(events->whyNoNotifications()) << "without a way to the bus";
    writeText(phone.settingsFile(), "1");
    ASSERT_TRUE(isReady(events->descriptor(), 10s));
    const auto event = events->next();
    ASSERT_TRUE(event);
    EXPECT_EQ(event->kind, PhoneEvent::Kind::fileChanged);
    EXPECT_EQ(event->name, kit::settingsPath);
}

}  // namespace
