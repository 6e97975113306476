// SPDX-License-Identifier: MIT
// In a sanitized build, a leak in a program that a test runs is a failure of that program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "running_program.h"
#include "trivel3ctl.h"

namespace test {
namespace {

TEST(LeakDetection, reachesTheProgramsThatTestsRun) {
    const Trivel3ctl ctl;
    const Outcome outcome = RunningProgram({TEST_LEAKING_PROGRAM}, ctl.environment()).finish();
    EXPECT_NE(outcome.status, 0);
    EXPECT_THAT(outcome.errors, testing::HasSubstr("detected memory leaks"));
}

}  // namespace
}  // namespace test
