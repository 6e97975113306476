// SPDX-License-Identifier: MIT
// The real program in a sandbox that does not let it have openat2.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace reliability_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

class Sandbox : public testing::TestWithParam<int> {
protected:
    void SetUp() override {
        const Trivel3ctl::Arguments sandbox{TEST_SANDBOX, std::to_string(GetParam())};
        if (ChildProcess({sandbox[0], sandbox[1], "/bin/true"}).finish().status != 0) {
            GTEST_SKIP() << "no process can be kept from a system call here";
        }
        ctl.usePhone(phone.folder);
        ctl.runThrough(sandbox);
    }

    std::string get() {
        const Outcome outcome = ctl.run({"get", "HotCorners"});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return outcome.output;
    }
    void set(const std::string& value) {
        const Outcome outcome = ctl.run({"set", "HotCorners", value});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
    }

    Phone phone;
    Trivel3ctl ctl;
};

TEST_P(Sandbox, keepsNoSettingFromBeingReadAndWritten) {
    writeText(phone / "store/file", settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<string>kept</string>"}}));
    fs::create_directories(phone.preferencesFolder());
    fs::create_symlink("/store/file", phone.settingsFile());
    EXPECT_EQ(get(), "false\n");
    set("on");
    EXPECT_EQ(get(), "true\n");
    EXPECT_EQ(readText(phone / "store/file"),
              settingsOf({{"HotCorners", "<true/>"}, {"Mine", "<string>kept</string>"}}));
}

TEST_P(Sandbox, makesTheFoldersThatAPhoneLacks) {
    set("off");
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
}

TEST_P(Sandbox, letsNoLinkLeadOut) {
    const std::string outside = settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<string>outside</string>"}});
    fs::create_directories(phone.preferencesFolder());
    for (const std::string& target : {phone.around / "outside", "/proc/self/root" + phone.around / "outside",
                                      std::string("../../../../../outside")}) {
        writeText(phone.around / "outside", outside);
        fs::remove(phone.settingsFile());
        fs::create_symlink(target, phone.settingsFile());
        ASSERT_EQ(readSettings(phone), outside) << "a program that takes no care would not come out either";
        EXPECT_EQ(get(), "true\n") << "the default";
        EXPECT_THAT(ctl.run({"list"}).output, Not(HasSubstr("outside")));
        set("off");
        EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
        EXPECT_EQ(readText(phone.around / "outside"), outside);
    }
}

INSTANTIATE_TEST_SUITE_P(WithoutOpenat2, Sandbox, testing::Values(ENOSYS, EPERM),
                         [](const testing::TestParamInfo<int>& refusal) {
                             return refusal.param == ENOSYS ? "whichIsMissing" : "whichIsRefused";
                         });

}  // namespace
}  // namespace reliability_test
