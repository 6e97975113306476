// SPDX-License-Identifier: MIT
#include <filesystem>

#include "far_phone.h"
#include "tests/kit/distance.h"

namespace far_phones_test {
namespace {

using Connecting = FarPhone;

TEST_F(Connecting, unknownHostIsRefusedWhereNobodyCanBeAsked) {
    writeText(host.inside("known_hosts"), "");
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "its key is not known here");
}

TEST_F(Connecting, changedKeyIsRefused) {
    host.changeKey();
    ctl.set("TRIVEL3_PHONE", host.address());
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "another phone answers at this address");
}

TEST_F(Connecting, keyThatDoesNotFitIsSaidToBeSo) {
    writeText(host.inside("authorized_keys"), "");
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "ssh-copy-id 127.0.0.1");
}

TEST_F(Connecting, portWhereNobodyAnswersIsSaidToBeSo) {
    std::uint16_t port = 0;
    { const auto taken = listenOnLoopback(port); }
    ctl.set("TRIVEL3_PHONE", host.address(port));
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "Connection refused");
}

TEST_F(Connecting, hostWithoutANameIsSaidToBeSo) {
    ctl.set("TRIVEL3_PHONE", "ssh://no-such-host.invalid/");
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "cannot connect to ssh://no-such-host.invalid");
}

TEST_F(Connecting, folderThatIsNotThereIsSaidToBeSo) {
    ctl.set("TRIVEL3_PHONE", host.address() + "/nowhere");
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "No such file or directory");
    ctl.set("TRIVEL3_PHONE", host.address() + "/device-information.plist");
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "is no folder there");
}

TEST_F(Connecting, addressThatIsNoneOrAnOptionIsWrongUsage) {
    for (const char* wrong : {"ssh://-oProxyCommand=touch%20owned/", "ssh://-oProxyCommand=x@phone/", "ssh://phone/-x",
                              "phone:/var", "ssh://"}) {
        ctl.set("TRIVEL3_PHONE", wrong);
        const Outcome outcome = ctl.run({"get", "HotCorners"});
        EXPECT_EQ(outcome.status, 2) << wrong << outcome.errors;
        EXPECT_EQ(linesOf(outcome.errors).size(), 1U) << outcome.errors;
    }
}

TEST_F(Connecting, reportIsNotTakenForAPhoneNorAPhoneForOne) {
    const Outcome report = ctl.run({"report"});
    expectDone(report);
    EXPECT_THAT(report.output, HasSubstr("iPhone6,1"));
}

struct OldPhone : FarPhone {
    OldPhone() : FarPhone({.server = {"KexAlgorithms diffie-hellman-group14-sha1"}}) {}
};

TEST_F(OldPhone, isConnectedWithOnlyWhereTheUserAllowsItAndTheLineForThatIsNamed) {
    ctl.set("TRIVEL3_SSH", host.ssh({"KexAlgorithms -diffie-hellman-group14-sha1"}));
    const Outcome refused = ctl.run({"get", "HotCorners"});
    expectFailure(refused, 1, "KexAlgorithms +diffie-hellman-group14-sha1");
    EXPECT_THAT(refused.errors, HasSubstr("Host 127.0.0.1"));
    ctl.set("TRIVEL3_SSH", host.ssh({"KexAlgorithms +diffie-hellman-group14-sha1"}));
    expectDone(ctl.run({"get", "HotCorners"}));
}

struct PhoneOfRsaAlone : FarPhone {
    PhoneOfRsaAlone() : FarPhone({.server = {"HostKeyAlgorithms ssh-rsa"}, .keyType = "rsa"}) {}
};

TEST_F(PhoneOfRsaAlone, isConnectedWithByTheTwoLinesThatAreNamed) {
    const Outcome refused = ctl.run({"get", "HotCorners"});
    expectFailure(refused, 1, "\"HostKeyAlgorithms +ssh-rsa\", \"PubkeyAcceptedAlgorithms +ssh-rsa\"");
    EXPECT_THAT(refused.errors, HasSubstr("Host 127.0.0.1"));
    ctl.set("TRIVEL3_SSH", host.ssh({"HostKeyAlgorithms +ssh-rsa", "PubkeyAcceptedAlgorithms +ssh-rsa"}));
    expectDone(ctl.run({"set", "HotCorners", "false"}));
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}}));
}

struct PhoneWithoutSubsystem : FarPhone {
    PhoneWithoutSubsystem() : FarPhone({.hasSubsystem = false}) {}
};

TEST_F(PhoneWithoutSubsystem, isToldWhatToInstallAndTakesAServerByItsPath) {
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "--sftp-server");
    expectDone(ctl.run({"--sftp-server", TEST_SFTP_SERVER_PATH, "set", "HotCorners", "false"}));
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}}));
}

struct GreetingPhone : FarPhone {
    GreetingPhone() : FarPhone({.hasSubsystem = false}) {}
};

TEST_F(GreetingPhone, isUnderstoodAfterItsGreeting) {
    const std::string server = host.inside("greeting-server");
    writeText(server,
              "#!/bin/sh\necho 'Welcome to the phone!'\necho 'It has been jailed.'\nexec " TEST_SFTP_SERVER_PATH "\n");
    std::filesystem::permissions(server, std::filesystem::perms::owner_all);
    expectDone(ctl.run({"--sftp-server", server, "set", "HotCorners", "false"}));
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}}));
}

TEST_F(GreetingPhone, thatSaysNothingElseIsShown) {
    const std::string server = host.inside("greeting-server");
    writeText(server, "#!/bin/sh\necho 'This account is not available.'\n");
    std::filesystem::permissions(server, std::filesystem::perms::owner_all);
    expectFailure(ctl.run({"--sftp-server", server, "get", "HotCorners"}), 1, "This account is not available.");
}

}  // namespace
}  // namespace far_phones_test
