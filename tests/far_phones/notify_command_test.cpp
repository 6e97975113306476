// SPDX-License-Identifier: MIT
#include "far_phone.h"

namespace far_phones_test {
namespace {

/// A folder whose phone is told by a command of this machine, as a mounted one is.
struct NotifyCommand : testing::Test {
    NotifyCommand() { ctl.usePhone(phone.folder); }

    Phone phone;
    Trivel3ctl ctl;
    std::string told = phone.around / "told";
};

TEST_F(NotifyCommand, isRunOnceForEachChangeWithTheNotificationsNameBehindIt) {
    expectDone(ctl.run({"--notify", "printf '%s\\n' >>" + told, "set", "HotCorners", "false"}));
    EXPECT_EQ(readText(told), std::string(preferencesChanged) + "\n");
    ctl.set("TRIVEL3_NOTIFY", "printf '%s\\n' >>" + told);
    expectDone(ctl.run({"undo"}));
    EXPECT_EQ(linesOf(readText(told)).size(), 2U);
}

TEST_F(NotifyCommand, thatFailsIsToldBesideTheChangeThatIsMade) {
    const Outcome outcome = ctl.run({"--notify", "echo nobody listens; false", "set", "HotCorners", "false"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(linesOf(outcome.errors), ElementsAre(HasSubstr("written, but the phone was not told")));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
}

}  // namespace
}  // namespace far_phones_test
