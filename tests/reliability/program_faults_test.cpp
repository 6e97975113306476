// SPDX-License-Identifier: MIT
// The real program, whose every system call of a write the kernel fails in turn, or is the last it makes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <cerrno>

#include "hosts/system/error_text.h"
#include "platform/foundation/property_list.h"
#include "settings_count.h"
#include "tests/kit/expectations.h"
#include "traced_set.h"
#include "tried_table.h"
#include "write_situations.h"

namespace reliability_test {

using namespace kit;

namespace {

using testing::ElementsAre;

struct Error {
    std::string name;
    int number;
};

const std::vector<Error> errors{
    {"ENOSPC", ENOSPC}, {"EDQUOT", EDQUOT}, {"EIO", EIO}, {"EROFS", EROFS}, {"EINTR", EINTR}};

std::string settingsWithHotCornersOff() {
    auto content = *platform::readPropertyList(settingsNumber(1)).value->dictionary();
    content.set("HotCorners", false);
    return *platform::writeXmlPropertyList(platform::Value(content)).bytes;
}

class ProgramFaults : public testing::Test {
protected:
    void SetUp() override {
        const std::string reason = TracedSet::whyNot();
        if (!reason.empty()) GTEST_SKIP() << reason;
        const Phone undisturbed;
        writeSituations().front().prepare(undisturbed);
        calls = TracedSet(undisturbed).callsOfTheWrite();
        EXPECT_EQ(readText(undisturbed.settingsFile()), wanted);
        ASSERT_GT(calls.size(), 15U);
    }

    void startAnew() {
        phone.emplace();
        writeSituations().front().prepare(*phone);
        attributes = attributesOf(phone->settingsFile());
        program.emplace(*phone);
    }

    TriedTable::Outcome outcome() const {
        const std::string found = readText(phone->settingsFile());
        return {found == wanted, settingsLost(before, wanted, found)};
    }

    void expectWholeAndTidy() {
        EXPECT_EQ(outcome().lost, 0U);
        EXPECT_EQ(attributesOf(phone->settingsFile()), attributes);
        EXPECT_LE(temporariesIn(phone->folder), 1U);
        auto files = openPhone(phone->folder);
        // Another content first: one that is there already replaces nothing.
        EXPECT_EQ(kit::replaceFile(files, settingsPath, before + "\n"), "");
        EXPECT_EQ(kit::replaceFile(files, settingsPath, before), "");
        EXPECT_EQ(temporariesIn(phone->folder), 0U);
        EXPECT_EQ(attributesOf(phone->settingsFile()), attributes);
    }

    // A run that says that it is done has written; one that says that it has failed says why, and the old file
    // stands, unless all that failed was making the new one's name durable.
    void expectTruth(const Outcome& said, const Error& error) {
        if (said.status == 0) {
            expectDone(said);
            EXPECT_TRUE(outcome().isNew);
            return;
        }
        expectFailure(said, 1, settingsPath);
        EXPECT_THAT(said.errors, testing::ContainsRegex("cannot (read|write) .*: " + hosts::errorText(error.number)));
        const bool isWritten = said.errors.find("it is written, but its name") != std::string::npos;
        EXPECT_EQ(outcome().isNew, isWritten);
    }

    const std::string before = settingsNumber(1);
    const std::string wanted = settingsWithHotCornersOff();
    std::vector<TracedCall> calls;
    std::optional<Phone> phone;
    std::string attributes;
    std::optional<TracedSet> program;
};

TEST_F(ProgramFaults, areToldAndLeaveTheOldFileOrTheNewOne) {
    TriedTable table("`trivel3ctl set` with each system call of its write failed by the kernel", "fault");
    for (const TracedCall& call : calls) {
        for (const Error& error : errors) {
            SCOPED_TRACE(error.name + " for " + call.line);
            startAnew();
            const Outcome said = program->runWithError(call, error.name);
            EXPECT_THAT(program->disturbedAt(), ElementsAre(call.position));
            expectTruth(said, error);
            if (error.number == EINTR) expectDone(said);
            table.add(error.name, outcome());
            expectWholeAndTidy();
        }
    }
    EXPECT_EQ(table.lost(), 0U);
}

TEST_F(ProgramFaults, thatEndItLeaveTheOldFileOrTheNewOne) {
    TriedTable table("`trivel3ctl set` killed at each system call of its write", "killed at");
    for (const TracedCall& call : calls) {
        SCOPED_TRACE("killed at " + call.line);
        startAnew();
        EXPECT_EQ(program->runAndKill(call).status, -SIGKILL);
        EXPECT_THAT(program->disturbedAt(), ElementsAre(call.position));
        table.add(call.name, outcome());
        expectWholeAndTidy();
    }
    EXPECT_EQ(table.lost(), 0U);
}

}  // namespace
}  // namespace reliability_test
