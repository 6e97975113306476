// SPDX-License-Identifier: MIT
#include <filesystem>

#include "far_phone.h"

namespace far_phones_test {
namespace {

/// A user whose key is with an agent alone.
struct AgentOfTheUser : FarPhone {
    AgentOfTheUser() : agent({TEST_SSH_AGENT, "-D", "-a", socket}) {
        // It says where it listens once it does.
        EXPECT_THAT(agent.readLine().value_or(""), HasSubstr(socket));
        Environment environment = ownEnvironment();
        environment["SSH_AUTH_SOCK"] = socket;
        const std::string key = host.inside("user_key");
        EXPECT_EQ(ChildProcess({TEST_SSH_ADD, "-q", key}, environment).finish().status, 0);
        std::filesystem::remove(key);
        ctl.set("TRIVEL3_SSH", ssh);
        ctl.set("SSH_AUTH_SOCK", socket);
    }

    std::string ssh = host.sshWithoutKey({"ForwardAgent yes"});
    std::string socket = host.inside("agent");
    ChildProcess agent;
};

TEST_F(AgentOfTheUser, opensThePhone) {
    expectDone(ctl.run({"set", "HotCorners", "false"}));
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}}));
    ctl.unset("SSH_AUTH_SOCK");
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "no key fits");
}

TEST_F(AgentOfTheUser, isNotThePhonesEvenWhereTheConfigurationForwardsIt) {
    const std::string seen = host.inside("seen");
    writeText(host.inside("bin/notifyutil"), "#!/bin/sh\necho \"${SSH_AUTH_SOCK-none}\" >>'" + seen + "'\n");
    const std::string byHand = ssh + " -p " + std::to_string(host.port()) + " 127.0.0.1 notifyutil";
    EXPECT_EQ(ChildProcess({"/bin/sh", "-c", byHand}, ctl.environment()).finish().status, 0);
    EXPECT_THAT(linesOf(readText(seen)), ElementsAre(testing::StartsWith("/")));
    expectDone(ctl.run({"set", "HotCorners", "false"}));
    EXPECT_THAT(linesOf(readText(seen)), ElementsAre(testing::_, "none"));
}

}  // namespace
}  // namespace far_phones_test
