// SPDX-License-Identifier: MIT
#include "hosts/phones/gone_phone.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <chrono>
#include <filesystem>

#include "hosts/phones/folder_phone.h"
#include "tests/kit/phone.h"
#include "tests/kit/private_mounts.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using hosts::PhoneEvent;
using kit::Phone;
using testing::HasSubstr;
using testing::IsEmpty;

bool isReady(const hosts::PhoneEvents& events, std::chrono::milliseconds limit) {
    pollfd watched{events.descriptor(), POLLIN, 0};
    return ::poll(&watched, 1, static_cast<int>(limit.count())) > 0;
}

std::unique_ptr<hosts::Phone> openFolder(const std::string& folder) {
    auto opened = hosts::FolderPhone::open(folder, "/no/such/module.so");
    if (!opened) throw std::runtime_error(opened.error().text());
    return *std::move(opened);
}

/// What became of the phone, within what a loaded machine may take; empty for nothing.
std::string nextGoing(hosts::PhoneEvents& events, std::chrono::milliseconds limit = 10s) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    do {
        while (const auto event = events.next()) {
            if (event->kind == PhoneEvent::Kind::gone) return event->name;
        }
        if (!isReady(events, limit)) break;
    } while (std::chrono::steady_clock::now() < deadline);
    return {};
}

class GonePhone : public testing::Test {
protected:
    GonePhone() { kit::writeSettings(phone, "1"); }

    std::unique_ptr<hosts::PhoneEvents> observe() {
        const std::string paths[] = {kit::settingsPath};
        return opened->observe(paths);
    }

    platform::Result<platform::Stamp> read(std::string_view path) {
        std::string contents;
        return opened->files().readFile(path, contents);
    }

    Phone phone;
    std::unique_ptr<hosts::Phone> opened = openFolder(phone.folder);
};

TEST_F(GonePhone, isToldWhenItsFolderIsDeleted) {
    const auto events = observe();
    EXPECT_EQ(events->next(), std::nullopt);
    fs::remove_all(phone.folder);
    EXPECT_EQ(nextGoing(*events), phone.folder + " has been deleted");
}

TEST_F(GonePhone, isToldOnceAndThenThereIsRest) {
    const auto events = observe();
    fs::remove_all(phone.folder);
    ASSERT_NE(nextGoing(*events), "");
    EXPECT_EQ(events->next(), std::nullopt);
    fs::create_directory(phone.folder);
    fs::remove(phone.folder);
    EXPECT_FALSE(isReady(*events, 300ms));
}

TEST_F(GonePhone, isToldToThoseWhoWatchNoFile) {
    const auto events = opened->observe({});
    fs::remove_all(phone.folder);
    EXPECT_EQ(nextGoing(*events), phone.folder + " has been deleted");
}

TEST_F(GonePhone, isNotOneThatIsMoved) {
    const auto events = observe();
    fs::create_directory(phone.around / "shelf");
    fs::rename(phone.folder, phone.around / "shelf/phone");
    EXPECT_EQ(nextGoing(*events, 300ms), "");
    EXPECT_EQ(kit::replaceFile(opened->files(), kit::settingsPath, "2"), "");
    fs::remove_all(phone.around / "shelf/phone");
    EXPECT_EQ(nextGoing(*events), phone.folder + " has been deleted");
}

TEST_F(GonePhone, isNotOneBesideWhichSomethingIsDeleted) {
    const auto events = observe();
    fs::create_directory(phone.around / "other");
    fs::remove(phone.around / "other");
    EXPECT_EQ(nextGoing(*events, 300ms), "");
}

TEST_F(GonePhone, isToldWhenAnotherFolderTakesItsPlace) {
    fs::remove_all(phone / "var");
    const auto events = observe();
    fs::create_directory(phone.around / "other");
    fs::rename(phone.around / "other", phone.folder);
    EXPECT_EQ(nextGoing(*events), phone.folder + " has been deleted");
}

TEST_F(GonePhone, canBeNeitherReadNorChanged) {
    fs::remove_all(phone.folder);
    const auto outcome = read(kit::settingsPath);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().text(),
              std::string("cannot read ") + kit::settingsPath + ": the phone is gone: its folder has been deleted");
    EXPECT_TRUE(outcome.error().isPassing);
    EXPECT_THAT(kit::replaceFile(opened->files(), kit::settingsPath, "2"),
                HasSubstr("cannot write " + std::string(kit::settingsPath) + ": the phone is gone"));
}

TEST_F(GonePhone, isNotMadeAnew) {
    fs::remove_all(phone.folder);
    fs::create_directory(phone.folder);
    EXPECT_NE(kit::replaceFile(opened->files(), kit::settingsPath, "2"), "");
    EXPECT_THAT(kit::namesIn(phone.folder), IsEmpty());
}

// The kernel names a folder that was deleted so, and a folder may have that name itself.
TEST_F(GonePhone, isNotOneThatIsCalledDeleted) {
    fs::rename(phone.folder, phone.around / "phone (deleted)");
    const auto missing = read("/missing");
    ASSERT_FALSE(missing);
    EXPECT_FALSE(missing.error().isPassing);
    EXPECT_EQ(kit::replaceFile(opened->files(), "/missing", "2"), "");
}

TEST_F(GonePhone, isToldWhenItsMountIsTakenAway) {
    if (!kit::mayMount()) GTEST_SKIP() << kit::noMounts;
    const int status = kit::runForked([&] {
        if (!kit::enterPrivateMounts() || !kit::mountMemory(phone.folder)) return 2;
        const auto mounted = openFolder(phone.folder);
        const auto events = mounted->observe({});
        if (!nextGoing(*events, 100ms).empty()) return 3;
        ::umount2(phone.folder.c_str(), MNT_DETACH);
        return nextGoing(*events) == phone.folder + " is mounted no more" ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
}

}  // namespace
