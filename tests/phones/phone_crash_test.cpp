// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <random>

#include "tests/kit/forked.h"
#include "tests/kit/phone.h"

namespace {

using kit::openPhone;
using kit::Phone;
using kit::settingsName;
using kit::settingsPath;
using kit::temporariesIn;
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

// Writes until it is killed, and tells on `progress` of each write that is done.
int writeForEver(const std::string& folder, int progress) {
    auto files = openPhone(folder);
    for (int number = 1;; ++number) {
        if (!kit::replaceFile(files, settingsPath, contentNumber(number)).empty()) return 1;
        if (::write(progress, &number, sizeof number) != sizeof number) return 2;
    }
}

int killAfter(pid_t child, int progress, int writes, std::chrono::microseconds delay) {
    int done = 0;
    while (done < writes && ::read(progress, &done, sizeof done) == sizeof done) {
    }
    ::usleep(static_cast<useconds_t>(delay.count()));
    ::kill(child, SIGKILL);
    EXPECT_EQ(kit::waitForChild(child), -SIGKILL);
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
        const pid_t child = kit::startForked([&] { return writeForEver(phone.folder, ends[1]); });
        telling = hosts::Descriptor{};
        const int done = killAfter(child, told.get(), writesPerRound, std::chrono::microseconds{delays(random)});
        EXPECT_EQ(done, writesPerRound);

        std::string contents;
        auto files = openPhone(phone.folder);
        ASSERT_TRUE(files.readFile(settingsPath, contents));
        EXPECT_GE(wholeContent(contents), writesPerRound);
        EXPECT_LE(temporariesIn(phone.preferencesFolder()), 1U);
        ASSERT_EQ(kit::replaceFile(files, settingsPath, contentNumber(0)), "");
        EXPECT_THAT(kit::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
    }
}

}  // namespace
