// SPDX-License-Identifier: MIT
// The process is killed before and after every system call of a write.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <cerrno>

#include "settings_count.h"
#include "tests/kit/forked.h"
#include "tests/kit/watched_calls.h"
#include "tried_table.h"
#include "write_situations.h"

namespace reliability_test {

using namespace kit;

namespace {

using testing::AnyOf;

enum class Moment { before, after };

// In a process of its own: writes, and is killed at the call of that number. The exit status is 0 when
// there was no such call.
int writeAndDie(const WriteSituation& situation, const Phone& phone, std::size_t fatal, Moment moment) {
    bool armed = false;
    std::size_t first = 0;
    const auto dieAt = [&](std::size_t number, Moment now) {
        if (armed && now == moment && number - first == fatal) ::raise(SIGKILL);
        return 0;
    };
    WatchedCalls calls{[&](const std::string&, std::size_t number) { return dieAt(number, Moment::before); },
                       [&](const std::string&, std::size_t number) { dieAt(number, Moment::after); }};
    auto files = openPhone(phone.folder, calls);
    first = calls.made().size();
    armed = true;
    return kit::replaceFile(files, situation.path, contentWanted()).empty() ? 0 : 1;
}

void tryDeath(const WriteSituation& situation, const std::string& call, std::size_t number, Moment moment,
              TriedTable& table) {
    const std::string when = moment == Moment::before ? "before " : "after ";
    SCOPED_TRACE(situation.name + ": killed " + when + "call " + std::to_string(number) + " (" + call + ")");
    const Phone phone;
    situation.prepare(phone);
    const std::string attributes = attributesWanted(situation, phone);
    ASSERT_EQ(runForked([&] { return writeAndDie(situation, phone, number, moment); }), -SIGKILL);

    const std::string found = readText(phone / situation.file);
    const std::size_t lost = settingsLost(contentBefore(situation), contentWanted(), found);
    EXPECT_EQ(lost, 0U);
    EXPECT_LE(temporariesIn(phone.folder), 1U + (situation.name == "abandoned temporary file" ? 1U : 0U));
    EXPECT_THAT(attributesOf(phone / situation.file), AnyOf(attributes, ""));
    table.add(systemCallOf(call), {found == contentWanted(), lost});

    auto files = openPhone(phone.folder);
    EXPECT_EQ(kit::replaceFile(files, situation.path, settingsNumber(4)), "");
    EXPECT_EQ(readText(phone / situation.file), settingsNumber(4));
    EXPECT_EQ(temporariesIn(phone.folder), 0U);
    EXPECT_EQ(attributesOf(phone / situation.file), attributes);
}

TEST(KilledWrites, leaveTheOldFileOrTheNewOneWhicheverCallIsTheLast) {
    TriedTable table("The process killed before, and again after, each system call of a write", "call");
    for (const WriteSituation& situation : writeSituations()) {
        const auto calls = callsOfAWrite(situation);
        for (std::size_t number = 0; number < calls.size(); ++number) {
            tryDeath(situation, calls[number], number, Moment::before, table);
            tryDeath(situation, calls[number], number, Moment::after, table);
        }
    }
    EXPECT_GT(table.tried(), 200U);
    EXPECT_EQ(table.lost(), 0U);
}

}  // namespace
}  // namespace reliability_test
