// SPDX-License-Identifier: MIT
// A short soak; script/soak makes a long one.
#include "soak.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace reliability_test {

using namespace kit;

namespace {

// Freed memory is not kept back by the sanitizer, where there is one, to be told from memory that is lost.
std::map<std::string, std::string> environment() {
    const char* usual = std::getenv("ASAN_OPTIONS");
    return {
        {"ASAN_OPTIONS", std::string(usual ? usual : "") + ":quarantine_size_mb=1:thread_local_quarantine_size_kb=64"}};
}

// The sanitizer's own records grow for longer.
#ifdef TRIVEL3_SANITIZED
constexpr std::size_t margin = std::size_t{4} << 20;
#else
constexpr std::size_t margin = std::size_t{1} << 20;
#endif

TEST(Soak, ofRandomStepsTakesNoMoreMemoryFilesOrThreads) {
    constexpr unsigned long warmingUp = 5'000;
    constexpr unsigned long steps = 20'000;
    Soak soak(20261121, environment());
    soak.run(warmingUp);
    const auto before = soak.footprint();
    soak.run(steps - warmingUp);
    const auto after = soak.footprint();

    EXPECT_LE(after.memory, before.memory + margin);
    EXPECT_EQ(after.openFiles, before.openFiles);
    EXPECT_EQ(before.threads, 1U);
    EXPECT_EQ(after.threads, 1U);
    const Outcome outcome = soak.finish();
    EXPECT_EQ(outcome.status, 0);
    // Some of what is written from outside is no property list, and is kept when it is written over.
    EXPECT_THAT(linesOf(outcome.errors), testing::Each(testing::HasSubstr("what it held is kept in")));
}

}  // namespace
}  // namespace reliability_test
