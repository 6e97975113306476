// SPDX-License-Identifier: MIT
// In a sanitized build, a leak in a program that a test runs is a failure of that program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/kit/child_process.h"
#include "tests/kit/trivel3ctl.h"

namespace reliability_test {

using namespace kit;

namespace {

TEST(LeakDetection, reachesTheProgramsThatTestsRun) {
    const Trivel3ctl ctl;
    const Outcome outcome = ChildProcess({TEST_LEAKING_PROGRAM}, ctl.environment()).finish();
    EXPECT_NE(outcome.status, 0);
    EXPECT_THAT(outcome.errors, testing::HasSubstr("detected memory leaks"));
}

}  // namespace
}  // namespace reliability_test
