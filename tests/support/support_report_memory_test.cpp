// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "support/support_email.h"
#include "tests/kit/test_platform.h"

namespace trivel3 {
namespace {

constexpr std::size_t megabyte = std::size_t{1} << 20;
constexpr std::size_t databaseSize = 64 * megabyte;
// What a process takes apart from the report: its code, its stack, the test's own platform.
constexpr std::size_t slack = 8 * megabyte;
// The greatest exit status; a failure gives it too.
constexpr std::size_t tooMuch = 255;

std::size_t peakMemory() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

/// By how much the e-mail of a report raises a process's peak, in whole megabytes up to `tooMuch`. It
/// is made in a process of its own, whose exit status tells.
std::size_t megabytesTakenBySupportEmail(std::string_view repeated) {
    kit::TestPlatform platform;
    {
        std::string database;
        database.reserve(databaseSize);
        while (database.size() + repeated.size() <= databaseSize)
            database += repeated;
        platform.phone.put("/var/lib/dpkg/status", database);
    }
    const pid_t child = ::fork();
    if (child == 0) {
        const std::size_t before = peakMemory();
        const auto composer = makeSupportEmail(platform.services(), nullptr);
        const bool complete = composer && composer->attachments().at(0).data->size() >= databaseSize - megabyte;
        const std::size_t taken = (peakMemory() - before) / megabyte;
        ::_exit(complete ? static_cast<int>(std::min(taken, tooMuch)) : static_cast<int>(tooMuch));
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? static_cast<std::size_t>(WEXITSTATUS(status)) : tooMuch;
}

class SupportReportMemory : public testing::Test {
protected:
    void SetUp() override {
#ifdef TRIVEL3_SANITIZED
        GTEST_SKIP() << "the sanitizers keep memory of their own";
#endif
    }
};

TEST_F(SupportReportMemory, isAtMostThreeTimesThePackageDatabaseOfPlainText) {
    EXPECT_LE(megabytesTakenBySupportEmail("Package: com.example.application\nVersion: 1.0\n\n"),
              (3 * databaseSize + slack) / megabyte);
}

// Text beyond ASCII takes two bytes for each character in the report.
TEST_F(SupportReportMemory, isAtMostThreeTimesThePackageDatabaseOfAnyText) {
    EXPECT_LE(megabytesTakenBySupportEmail("Package: com.example.stra\xC3\x9F"
                                           "enbahn\nVersion: 1.0\n\n"),
              (3 * databaseSize + slack) / megabyte);
}

}  // namespace
}  // namespace trivel3
