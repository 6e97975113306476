// SPDX-License-Identifier: MIT
// The real program on a machine that gives it less and less memory: it says so, and ends in good order.
#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::AnyOf;

struct LittleMemory : testing::Test {
    LittleMemory() { fs::copy(TRIVEL3_SAMPLE_PHONE, phone.folder, fs::copy_options::recursive); }

    void SetUp() override {
#ifdef TRIVEL3_SANITIZED
        GTEST_SKIP() << "sanitizers take address space of their own";
#endif
        ctl.usePhone(phone.folder);
    }

    Outcome runWithin(std::size_t kilobytes, const Trivel3ctl::Arguments& arguments, const std::string& input) {
        ctl.runThrough({"/bin/sh", "-c", "ulimit -v " + std::to_string(kilobytes) + "; exec \"$@\"", "sh"});
        return ctl.run(arguments, input);
    }

    // In steps, from the first at which the dynamic loader itself gets as far as to say what it lacks. Before that, the
    // kernel ends what it cannot start.
    void expectGoodOrder(const Trivel3ctl::Arguments& arguments, std::size_t step, const std::string& input = {}) {
        constexpr int statusOfLoader = 127;
        constexpr std::size_t most = 32 * 1024;
        bool isLoading = false;
        Outcome outcome;
        for (std::size_t kilobytes = step; kilobytes <= most; kilobytes += step) {
            outcome = runWithin(kilobytes, arguments, input);
            isLoading = isLoading || outcome.status == statusOfLoader;
            if (!isLoading || outcome.status == statusOfLoader) continue;
            EXPECT_THAT(outcome.status, AnyOf(0, 1)) << arguments.front() << " within " << kilobytes << " KB\n"
                                                     << outcome.errors;
            EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), outcome.status)
                << arguments.front() << " within " << kilobytes << " KB\n"
                << outcome.errors;
        }
        EXPECT_EQ(outcome.status, 0) << arguments.front() << " within " << most << " KB\n" << outcome.errors;
    }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(LittleMemory, endsNoSubcommandByASignal) {
    const std::string list = ctl.folder() / "list.plist";
    writeText(list, settingsOf({{"A", "<integer>1</integer>"}}));
    const std::string lines =
        "{\"do\":\"tap\",\"row\":\"Advanced Options\"}\n{\"do\":\"tap\",\"row\":\"Disable in Applications\"}\n";
    for (const Trivel3ctl::Arguments& arguments : {Trivel3ctl::Arguments{"show"},
                                                   {"show", "Advanced Options/Close All Apps", "--json"},
                                                   {"list"},
                                                   {"list", "--json"},
                                                   {"get", "HotCorners"},
                                                   {"set", "HotCorners", "off"},
                                                   {"reset", "--all"},
                                                   {"plist", "lint", list},
                                                   {"plist", "convert", "json", list},
                                                   {"--help"}}) {
        expectGoodOrder(arguments, 256);
    }
    expectGoodOrder({"drive"}, 256, lines);
}

// What is read is cut short at whatever value there is no more room for.
TEST_F(LittleMemory, endsNoReadingOfALargeFileByASignal) {
    std::string many;
    for (int number = 0; number < 1'600'000; ++number)
        many += "<true/><string>ab</string>";
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"Many", "<array>" + many + "</array>"}}));
    for (const unsigned megabytes : {96U, 160U, 224U}) {
        const std::size_t kilobytes = std::size_t{megabytes} * 1024;
        for (const Trivel3ctl::Arguments& arguments : {Trivel3ctl::Arguments{"get", "HotCorners"}, {"show"}}) {
            const Outcome outcome = runWithin(kilobytes, arguments, {});
            EXPECT_THAT(outcome.status, AnyOf(0, 1)) << arguments.front() << " within " << kilobytes << " KB";
            EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), outcome.status) << outcome.errors;
        }
    }
}

}  // namespace
}  // namespace terminal_test
