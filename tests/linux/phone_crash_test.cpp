// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <random>

#include "forked.h"
#include "phone.h"
#include "watched_calls.h"

namespace {

namespace fs = std::filesystem;
using test::openPhone;
using test::Phone;
using test::settingsName;
using test::settingsPath;
using test::temporariesIn;
using testing::AnyOf;
using testing::ElementsAre;

// A content in which every line tells the number of lines and which content it is.
std::string contentNumber(int number) {
    constexpr int lines = 100;
    std::string content;
    for (int line = 0; line < lines; ++line)
        content += "content " + std::to_string(number) + "\n";
    return content;
}

// The number of the content that the file holds, if it is whole; -1 otherwise.
int wholeContent(const std::string& contents) {
    if (!contents.starts_with("content ")) return -1;
    const int number = std::atoi(contents.c_str() + std::char_traits<char>::length("content "));
    return contents == contentNumber(number) ? number : -1;
}

// Dies in place of the call of that number.
int writeAndDie(const Phone& phone, std::size_t fatalCall) {
    std::size_t made = 0;
    bool armed = false;
    test::WatchedCalls calls{[&](const std::string&, std::size_t) {
        if (armed && made++ == fatalCall) ::raise(SIGKILL);
        return 0;
    }};
    auto files = openPhone(phone.folder, calls);
    armed = true;
    return files.writeFileAtomically(settingsPath, contentNumber(2)) ? 0 : 1;
}

TEST(PhoneCrash, atAnyCallLeavesTheOldFileOrTheNewOne) {
    int crashes = 0;
    for (std::size_t fatalCall = 0;; ++fatalCall) {
        const Phone phone;
        auto files = openPhone(phone.folder);
        ASSERT_TRUE(files.writeFileAtomically(settingsPath, contentNumber(1)));
        const int status = test::runForked([&] { return writeAndDie(phone, fatalCall); });
        std::string contents;
        ASSERT_TRUE(files.readFile(settingsPath, contents));
        if (status == 0) break;
        ASSERT_EQ(status, -SIGKILL);
        ++crashes;
        EXPECT_THAT(wholeContent(contents), AnyOf(1, 2)) << fatalCall;
        EXPECT_LE(temporariesIn(phone.preferencesFolder()), 1U) << fatalCall;
        EXPECT_TRUE(files.writeFileAtomically(settingsPath, contentNumber(3)));
        EXPECT_THAT(test::namesIn(phone.preferencesFolder()), ElementsAre(settingsName)) << fatalCall;
    }
    EXPECT_GT(crashes, 10);
}

// Writes until it is killed, and tells on `progress` of each write that is done.
int writeForEver(const std::string& folder, int progress) {
    auto files = openPhone(folder);
    for (int number = 1;; ++number) {
        if (!files.writeFileAtomically(settingsPath, contentNumber(number))) return 1;
        if (::write(progress, &number, sizeof number) != sizeof number) return 2;
    }
}

int killAfter(pid_t child, int progress, int writes, std::chrono::microseconds delay) {
    int done = 0;
    while (done < writes && ::read(progress, &done, sizeof done) == sizeof done) {
    }
    ::usleep(static_cast<useconds_t>(delay.count()));
    ::kill(child, SIGKILL);
    EXPECT_EQ(test::waitForChild(child), -SIGKILL);
    return done;
}

TEST(PhoneCrash, inTheMiddleOfAThousandWritesLosesNothing) {
    constexpr int rounds = 50;
    constexpr int writesPerRound = 20;
    std::mt19937 random{20261121};
    std::uniform_int_distribution<int> delays{0, 3000};
    const Phone phone;
    for (int round = 0; round < rounds; ++round) {
        std::array<int, 2> ends{};
        ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        const hosts::Descriptor told{ends[0]};
        hosts::Descriptor telling{ends[1]};
        const pid_t child = test::startForked([&] { return writeForEver(phone.folder, ends[1]); });
        telling = hosts::Descriptor{};
        const int done = killAfter(child, told.get(), writesPerRound, std::chrono::microseconds{delays(random)});
        EXPECT_EQ(done, writesPerRound);

        std::string contents;
        auto files = openPhone(phone.folder);
        ASSERT_TRUE(files.readFile(settingsPath, contents));
        EXPECT_GE(wholeContent(contents), writesPerRound);
        EXPECT_LE(temporariesIn(phone.preferencesFolder()), 1U);
        ASSERT_TRUE(files.writeFileAtomically(settingsPath, contentNumber(0)));
        EXPECT_THAT(test::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
    }
}

TEST(PhoneCrash, neverShowsAReaderHalfAFile) {
    const Phone phone;
    auto files = openPhone(phone.folder);
    ASSERT_TRUE(files.writeFileAtomically(settingsPath, contentNumber(0)));
    std::array<pid_t, 2> writers{};
    for (pid_t& writer : writers) {
        writer = test::startForked([&] {
            auto own = openPhone(phone.folder);
            for (int number = 1; number <= 200; ++number) {
                if (!own.writeFileAtomically(settingsPath, contentNumber(number))) return 1;
            }
            return 0;
        });
    }
    std::string contents;
    int newest = 0;
    while (newest < 200) {
        ASSERT_TRUE(files.readFile(settingsPath, contents));
        const int number = wholeContent(contents);
        ASSERT_GE(number, 0);
        newest = std::max(newest, number);
    }
    for (const pid_t writer : writers)
        EXPECT_EQ(test::waitForChild(writer), 0);
    EXPECT_THAT(test::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

}  // namespace
