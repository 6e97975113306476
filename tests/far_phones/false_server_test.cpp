// SPDX-License-Identifier: MIT
#include "far_phone.h"

namespace far_phones_test {
namespace {

struct FalseServer : testing::TestWithParam<const char*> {
    FalseServer() {
        ctl.set("TRIVEL3_PHONE", "ssh://phone/");
        ctl.set("TRIVEL3_SSH", std::string(TEST_PYTHON) + " " + TEST_FALSE_SERVER + " " + GetParam());
    }

    static bool isClean(const std::string& text) {
        return std::ranges::all_of(text,
                                   [](char byte) { return byte == '\n' || static_cast<unsigned char>(byte) >= 0x20; });
    }

    Trivel3ctl ctl;
};

TEST_P(FalseServer, endsEachCommandInMeasuredTimeAndMemoryWithoutAByteThatSteersATerminal) {
    const std::vector<Trivel3ctl::Arguments> all = {
        {"get", "HotCorners"}, {"set", "HotCorners", "false"}, {"show", "Advanced Options/Close All Apps"}};
    for (const auto& arguments : all) {
        const Outcome outcome = ctl.run(arguments);
        EXPECT_TRUE(outcome.status == 0 || outcome.status == 1) << outcome.status;
        EXPECT_TRUE(outcome.status == 1 || arguments.front() != "set") << outcome.errors;
        EXPECT_TRUE(isClean(outcome.output)) << outcome.output;
        EXPECT_TRUE(isClean(outcome.errors)) << outcome.errors;
        EXPECT_LT(linesOf(outcome.errors).size(), 5U) << outcome.errors;
#ifndef TRIVEL3_SANITIZED
        EXPECT_LT(outcome.peakMemory, std::size_t{512} << 20);
#endif
    }
}

INSTANTIATE_TEST_SUITE_P(EveryLie, FalseServer,
                         testing::Values("noise", "wrong-ids", "length", "cut-packet", "wrong-types", "huge", "growing",
                                         "long-data", "names", "endless"),
                         [](const auto& lie) {
                             std::string name = lie.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST(SilentServer, isGivenUpAfterAWhile) {
    Trivel3ctl ctl;
    ctl.set("TRIVEL3_PHONE", "ssh://phone/");
    ctl.set("TRIVEL3_SSH", std::string(TEST_PYTHON) + " " + TEST_FALSE_SERVER + " silent");
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "is the phone awake?");
}

}  // namespace
}  // namespace far_phones_test
