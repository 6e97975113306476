// SPDX-License-Identifier: MIT
// A mount whose phone is gone.
#include <gmock/gmock.h>

#include "mounted_phone.h"
#include "tests/kit/expectations.h"

namespace mounts_test {

namespace {

using testing::IsEmpty;

struct GoneMount : MountTest {
    void mountSshfs(const SshfsMount::Options& options) {
        mount = std::make_unique<SshfsMount>(options);
        use(*mount);
        writeSettings(mount->behind(), manySettings());
        EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "true\n");
    }

    void expectEveryCommandToFail() {
        for (const auto& command : {std::vector<std::string>{"get", "HotCorners"},
                                    {"list"},
                                    {"show", "Advanced Options"},
                                    {"set", "HotCorners", "off"}}) {
            SCOPED_TRACE(command.front());
            expectFailure(ctl.run(command), 1, "");
        }
        EXPECT_EQ(readSettings(mount->behind()), manySettings());
    }

    std::unique_ptr<SshfsMount> mount;
};

TEST_F(GoneMount, whoseProgramIsDeadIsToldOfByEveryCommand) {
    mountSshfs({});
    mount->killProgram();
    expectEveryCommandToFail();
    mount->unmount();
    EXPECT_THAT(namesIn(mount->folder()), IsEmpty());
}

TEST_F(GoneMount, whoseServerIsDeadIsToldOfByEveryCommand) {
    mountSshfs({{"reconnect"}, {}});
    mount->killServer();
    expectEveryCommandToFail();
    mount->unmount();
    EXPECT_THAT(namesIn(mount->folder()), IsEmpty());
}

// The bare folder on which it was mounted is not the phone.
TEST_F(GoneMount, thatIsUnmountedIsNoPhoneAndIsNotWrittenTo) {
    mountSshfs({});
    mount->unmount();
    expectEveryCommandToFail();
    EXPECT_THAT(namesIn(mount->folder()), IsEmpty());
}

TEST_F(GoneMount, isMissedByAProgramAtWork) {
    mountSshfs({});
    RunningTrivel3ctl program(ctl, {"drive"});
    mount->killProgram();
    program.send(json{{"do", "switch"}, {"row", "Hot Corners"}, {"on", false}}.dump() + "\n");
    const Outcome outcome = program.finish();
    EXPECT_NE(outcome.errors, "");
    mount->unmount();
    EXPECT_EQ(readSettings(mount->behind()), manySettings());
    EXPECT_THAT(namesIn(mount->folder()), IsEmpty());
}

}  // namespace
}  // namespace mounts_test
