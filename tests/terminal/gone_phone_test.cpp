// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <memory>

#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/private_bus.h"
#include "tests/kit/private_mounts.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* isGone = "the phone is gone: its folder has been deleted";

const std::vector<Trivel3ctl::Arguments> subcommands = {
    {"show"}, {"get", "HotCorners"}, {"set", "HotCorners", "on"}, {"list"}, {"reset", "--all"}, {"monitor"}, {"drive"}};

struct GonePhone : testing::Test {
    GonePhone() {
        writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
        ctl.usePhone(phone.folder);
        ctl.set("DBUS_SESSION_BUS_ADDRESS", bus.address());
    }

    PrivateBus bus;
    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(GonePhone, endsTheMonitor) {
    RunningTrivel3ctl monitor(ctl, {"monitor"});
    ASSERT_EQ(monitor.readErrorLine(), "listening");
    fs::remove_all(phone.folder);
    expectFailure(monitor.finish(), 1, "the phone is gone: " + phone.folder + " has been deleted");
    EXPECT_FALSE(fs::exists(phone.folder));
}

TEST_F(GonePhone, isNotDrivenAsAnEmptyOne) {
    Drive drive(ctl);
    ASSERT_EQ(rowLabelled(drive.show(), "Hot Corners").at("on"), false);
    fs::remove_all(phone.folder);

    const json answer = drive.moveSwitch("Hot Corners", true);

    EXPECT_EQ(answer.at("ok"), true) << "the answer keeps its form";
    EXPECT_THAT(eventsOf(answer, "write"), testing::ElementsAre(written(false)));
    EXPECT_THAT(eventsOf(answer, "notification"), testing::ElementsAre(notified()));
    const Outcome outcome = drive.finish();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, AllOf(HasSubstr("trivel3ctl: cannot read "), HasSubstr(isGone)));
    EXPECT_FALSE(fs::exists(phone.folder));
}

// A folder that was made in the old one's place is another one.
TEST_F(GonePhone, isNotTheFolderThatHasTakenItsPlace) {
    Drive drive(ctl);
    drive.show();
    fs::remove_all(phone.folder);
    fs::create_directory(phone.folder);
    EXPECT_THAT(eventsOf(drive.moveSwitch("Hot Corners", true), "write"), testing::ElementsAre(written(false)));
    drive.finish();
    EXPECT_THAT(namesIn(phone.folder), IsEmpty());
}

struct EmptyFolder : testing::Test {
    EmptyFolder() { ctl.set("TRIVEL3_PHONE", phone.folder); }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(EmptyFolder, isUsedAndSaidToHaveHeldNoPhone) {
    const std::string remark = "trivel3ctl: " + phone.folder + " is empty: it held no phone\n";
    for (const Trivel3ctl::Arguments& arguments :
         {Trivel3ctl::Arguments{"show"}, {"get", "HotCorners"}, {"list"}, {"reset", "--all"}, {"drive"}}) {
        SCOPED_TRACE(arguments.front());
        const Outcome outcome = ctl.run(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.errors, remark);
    }
    const Outcome first = ctl.run({"set", "HotCorners", "off"});
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.errors, remark);
    expectDone(ctl.run({"set", "HotCorners", "on"}));
    EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "true\n");
}

// Each run of the program has mounts of its own.
struct MountedPhone : testing::Test {
    MountedPhone() { ctl.usePhone(phone.folder); }

    void SetUp() override {
        if (!mayMount()) GTEST_SKIP() << noMounts;
    }

    /// The runs to come have the phone mounted, in memory, by this shell command.
    void mountBy(const std::string& command) {
        ctl.runThrough({"/usr/bin/unshare", "-rm", "/bin/sh", "-ec", command + "\n\"$@\"", "sh"});
    }
    std::string mountCommand() const { return "mount -t tmpfs -o size=64k none '" + phone.folder + "'"; }
    std::string fillCommand() const {
        const std::string folder = phone.preferencesFolder();
        writeText(phone.around / "settings", settingsOf({{"HotCorners", "<false/>"}}));
        return "mkdir -p '" + folder + "'; cp '" + (phone.around / "settings") + "' '" + phone.settingsFile() + "'";
    }
    /// Has the program see the phone mounted, and then not any more.
    void mountAndUnmount() {
        mountBy(mountCommand() + "\n" + fillCommand());
        EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "false\n");
        ctl.runThrough({});
    }
    std::string memory() const { return ctl.folder() / "state/trivel3/mounts"; }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(MountedPhone, isNeitherShownNorWrittenToOnceItIsUnmounted) {
    mountAndUnmount();
    for (const Trivel3ctl::Arguments& arguments : subcommands) {
        SCOPED_TRACE(arguments.front());
        expectFailure(ctl.run(arguments), 1,
                      phone.folder +
                          ": the folder was a mount when it was last opened, and is none now; mount the phone "
                          "again, or give --create");
    }
    EXPECT_THAT(namesIn(phone / "var"), IsEmpty());
    mountAndUnmount();
}

TEST_F(MountedPhone, isUsedAsAFolderFromThenOnWithCreate) {
    mountAndUnmount();
    expectDone(ctl.run({"set", "HotCorners", "off", "--create"}));
    EXPECT_THAT(namesIn(memory()), IsEmpty());
    expectDone(ctl.run({"set", "HotCorners", "on"}));
    EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "true\n");
}

TEST_F(MountedPhone, isKnownByWhicheverPathItIsReached) {
    mountAndUnmount();
    fs::create_directory_symlink(phone.folder, phone.around / "link");
    expectFailure(ctl.run({"list", "--phone", phone.around / "link"}), 1, "mount the phone again");
}

TEST_F(MountedPhone, isRememberedInTheStateFolderForItsUserAlone) {
    mountAndUnmount();
    for (const char* folder : {"state", "state/trivel3", "state/trivel3/mounts"}) {
        EXPECT_EQ(fs::status(ctl.folder() / folder).permissions(), fs::perms::owner_all) << folder;
    }
}

TEST_F(MountedPhone, withoutAPlaceToRememberItStopsNothing) {
    writeText(ctl.folder() / "state", "a file");
    mountAndUnmount();
    const Outcome outcome = ctl.run({"set", "HotCorners", "off"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(linesOf(outcome.errors), testing::ElementsAre(HasSubstr("is not in the history")));
}

TEST_F(MountedPhone, thatIsTakenAwayEndsTheMonitor) {
    const PrivateBus bus;
    ctl.set("DBUS_SESSION_BUS_ADDRESS", bus.address());
    const std::string flag = phone.around / "flag";
    ctl.runThrough({"/usr/bin/unshare", "-rm", "/bin/sh", "-ec",
                    mountCommand() + "\n" + fillCommand() + "\n\"$@\" & while [ ! -e '" + flag +
                        "' ]; do sleep 0.01; done\numount -l '" + phone.folder + "'; wait $!",
                    "sh"});
    RunningTrivel3ctl monitor(ctl, {"monitor"});
    ASSERT_EQ(monitor.readErrorLine(), "listening");
    writeText(flag, "");
    expectFailure(monitor.finish(), 1, "the phone is gone: " + phone.folder + " is mounted no more");
}

TEST_F(MountedPhone, thatIsFullOrReadOnlyIsSaidSoAndStaysAsItIs) {
    const std::string compare =
        "\ncmp '" + phone.settingsFile() + "' '" + (phone.around / "settings") + "' && exit $status";
    const std::map<std::string, std::string> reasons = {
        {"dd if=/dev/zero of='" + (phone / "filling") + "' bs=4k 2>/dev/null || true", "No space left on device"},
        {"mount -o remount,ro '" + phone.folder + "'", "Read-only file system"}};
    for (const auto& [command, reason] : reasons) {
        SCOPED_TRACE(reason);
        ctl.runThrough(
            {"/usr/bin/unshare", "-rm", "/bin/sh", "-ec",
             mountCommand() + "\n" + fillCommand() + "\n" + command + "\nstatus=0; \"$@\" || status=$?" + compare,
             "sh"});
        expectFailure(ctl.run({"set", "HotCorners", "on"}), 1, reason);
    }
}

// A phone behind a program of its own, which dies.
struct DeadMount : testing::Test {
    void SetUp() override {
        constexpr const char* sshfs = "/usr/bin/sshfs";
        constexpr const char* server = "/usr/lib/openssh/sftp-server";
        if (::access(sshfs, X_OK) != 0 || ::access(server, X_OK) != 0) GTEST_SKIP() << "sshfs or its server is missing";
        if (::access("/dev/fuse", R_OK | W_OK) != 0) GTEST_SKIP() << "/dev/fuse cannot be used";
        fs::create_directory(far.folder + "/var");
        writeSettings(far, settingsOf({{"HotCorners", "<false/>"}}));
        writeText(far.around / "server", std::string("#!/bin/sh\nexec ") + server + "\n");
        ::chmod((far.around / "server").c_str(), 0755);
        mount = std::make_unique<ChildProcess>(std::vector<std::string>{
            sshfs, "-f", "-o", "ssh_command=" + (far.around / "server"), "far:" + far.folder, near.folder});
        while (!fs::exists(near.settingsFile())) {
            ASSERT_FALSE(mount->hasEnded());
            ::usleep(10'000);
        }
        ctl.usePhone(near.folder);
    }
    void TearDown() override {
        if (mount) ChildProcess({"/usr/bin/fusermount3", "-uz", near.folder}).finish();
    }
    void die() {
        mount->signal(SIGKILL);
        mount->wait();
    }

    Trivel3ctl ctl;
    Phone far;
    Phone near;
    std::unique_ptr<ChildProcess> mount;
};

TEST_F(DeadMount, endsTheMonitor) {
    const PrivateBus bus;
    ctl.set("DBUS_SESSION_BUS_ADDRESS", bus.address());
    RunningTrivel3ctl monitor(ctl, {"monitor"});
    ASSERT_EQ(monitor.readErrorLine(), "listening");
    die();
    expectFailure(monitor.finish(), 1, "the phone is gone: " + near.folder + " does not answer");
}

TEST_F(DeadMount, isOpenedByNoSubcommand) {
    die();
    for (const Trivel3ctl::Arguments& arguments : subcommands) {
        SCOPED_TRACE(arguments.front());
        expectFailure(ctl.run(arguments), 1, "Transport endpoint is not connected");
    }
}

TEST_F(DeadMount, isNotDrivenAsAnEmptyOne) {
    Drive drive(ctl);
    drive.show();
    die();
    EXPECT_THAT(eventsOf(drive.moveSwitch("Hot Corners", true), "write"), testing::ElementsAre(written(false)));
    EXPECT_THAT(drive.finish().errors, HasSubstr("cannot read "));
}

}  // namespace
}  // namespace terminal_test
