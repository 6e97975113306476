// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/kit/child_process.h"

namespace kit {

/// The run went well and had nothing to complain of.
inline void expectDone(const Outcome& outcome) {
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
}

/// The run ended with the status, printed nothing, and said why on one line.
inline void expectFailure(const Outcome& outcome, int status, const std::string& reason) {
    EXPECT_EQ(outcome.status, status);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors, testing::StartsWith("trivel3ctl: "));
    EXPECT_THAT(outcome.errors, testing::HasSubstr(reason));
    EXPECT_THAT(outcome.errors, testing::EndsWith("\n"));
    EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
}

}  // namespace kit
