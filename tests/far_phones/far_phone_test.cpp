// SPDX-License-Identifier: MIT
#include <sys/stat.h>

#include <filesystem>

#include "far_phone.h"
#include "tests/kit/distance.h"

namespace far_phones_test {
namespace {

TEST_F(FarPhone, showsListsAndGetsWhatTheSameFolderDoes) {
    writeSettings(host.phone(), settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<string>x</string>"}}));
    addApplication(host.phone(), "Named Application");
    Trivel3ctl near;
    near.usePhone(host.phone().folder);
    const std::vector<Trivel3ctl::Arguments> all = {{"list"},
                                                    {"list", "--json"},
                                                    {"get", "HotCorners"},
                                                    {"show"},
                                                    {"show", "Advanced Options"},
                                                    {"show", "Advanced Options/Close All Apps"},
                                                    {"show", "Advanced Options/Disable in Applications"},
                                                    {"export"}};
    for (const auto& arguments : all) {
        const Outcome far = ctl.run(arguments);
        expectDone(far);
        EXPECT_EQ(far.output, near.run(arguments).output) << arguments.back();
    }
}

TEST_F(FarPhone, isChangedAndToldOnce) {
    expectDone(ctl.run({"set", "HotCorners", "false", "QuickSwitcher", "off"}));
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}, {"QuickSwitcher", "<false/>"}}));
    EXPECT_THAT(host.posted(), ElementsAre(preferencesChanged));
    EXPECT_EQ(temporariesIn(host.phone().folder), 0U);
}

TEST_F(FarPhone, keepsTheFilesPermissionsAndGivesANewOneThoseThatEverybodyCanRead) {
    expectDone(ctl.run({"set", "HotCorners", "false"}));
    struct stat status {};
    ASSERT_EQ(::stat(host.phone().settingsFile().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0644U);
    ::chmod(host.phone().settingsFile().c_str(), 0600);
    expectDone(ctl.run({"set", "HotCorners", "true"}));
    ASSERT_EQ(::stat(host.phone().settingsFile().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
}

TEST_F(FarPhone, fileBehindALinkIsReplacedAndTheLinkStays) {
    writeText(host.phone() / "elsewhere.plist", settingsOf({{"Mine", "<true/>"}}));
    std::filesystem::create_directories(host.phone().preferencesFolder());
    std::filesystem::create_symlink(host.phone() / "elsewhere.plist", host.phone().settingsFile());
    expectDone(ctl.run({"set", "HotCorners", "false"}));
    EXPECT_TRUE(std::filesystem::is_symlink(host.phone().settingsFile()));
    EXPECT_EQ(readText(host.phone() / "elsewhere.plist"),
              settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}}));
}

TEST_F(FarPhone, whatWasNotUnderstoodIsKeptOnThisMachine) {
    writeSettings(host.phone(), "no property list");
    const Outcome outcome = ctl.run({"set", "HotCorners", "false"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("what it held is kept in"));
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}}));
}

TEST_F(FarPhone, historyAndUndoWorkOnIt) {
    expectDone(ctl.run({"set", "HotCorners", "false"}));
    expectDone(ctl.run({"undo"}));
    EXPECT_EQ(readSettings(host.phone()), settingsOf({}).replace(settingsOf({}).find("<dict>"), 15, "<dict/>\n"));
    EXPECT_EQ(host.posted().size(), 2U);
}

TEST_F(FarPhone, turnOfManyChangesLandsInOneReplacementAndEachIsTold) {
    // "Advanced Options" repairs what is no setting for a phone of this shape, and greys rows by what it reads.
    RunningTrivel3ctl drive(ctl, {"drive"});
    drive.send(
        "{\"do\":\"tap\",\"row\":\"Advanced Options\"}\n"
        "{\"do\":\"switch\",\"row\":\"Open to Last App\",\"on\":true}\n"
        "{\"do\":\"get\",\"key\":\"OpenToLastApp\"}\n");
    const auto opened = json::parse(drive.readLine().value());
    const auto switched = json::parse(drive.readLine().value());
    EXPECT_TRUE(switched["ok"]) << switched;
    EXPECT_EQ(json::parse(drive.readLine().value())["value"], true);
    expectDone(drive.finish());
    std::size_t posts = 0;
    for (const json* answer : {&opened, &switched}) {
        for (const json& event : (*answer)["events"]) {
            EXPECT_TRUE(event["event"] != "write" || event["ok"] == true);
            if (event["event"] == "notification") ++posts;
        }
    }
    EXPECT_GE(posts, 1U);
    EXPECT_EQ(host.posted().size(), posts);
}

TEST_F(FarPhone, shapeFollowsTheModelUnlessTheUserNamesOne) {
    host.nameModel("iPad4,1");
    const std::string tablet = ctl.run({"show", "Advanced Options"}).output;
    EXPECT_EQ(tablet, ctl.run({"--device", "tablet", "show", "Advanced Options"}).output);
    EXPECT_NE(tablet, ctl.run({"--device", "phone-4", "show", "Advanced Options"}).output);
    host.nameModel("Odd1,1");
    const Outcome unknown = ctl.run({"show", "Advanced Options"});
    EXPECT_THAT(unknown.errors, HasSubstr("the model Odd1,1 is not known"));
    EXPECT_EQ(unknown.output, ctl.run({"--device", "phone-4", "show", "Advanced Options"}).output);
}

TEST_F(FarPhone, commandOfTheUsersTellsThePhone) {
    const std::string told = host.inside("told");
    expectDone(ctl.run({"--notify", "echo told >>" + told + " #", "set", "HotCorners", "false"}));
    EXPECT_EQ(readText(told), "told\n");
    EXPECT_THAT(host.posted(), IsEmpty());
}

TEST_F(FarPhone, changeOfWhichThePhoneWasNotToldIsWrittenAndSaidSo) {
    const Outcome outcome = ctl.run({"--notify", "echo no such thing; exit 3; true", "set", "HotCorners", "false"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("written, but the phone was not told"));
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}}));
}

// The watcher on the phone may be a moment behind.
void expectTold(RunningTrivel3ctl& monitor, const SshHost& host) {
    writeSettings(host.phone(), settingsOf({{"HotCorners", "<false/>"}}));
    for (std::optional<std::string> line; !line;) {
        ASSERT_FALSE(monitor.hasEnded());
        host.post(preferencesChanged);
        line = monitor.readLine(std::chrono::milliseconds{500});
        EXPECT_EQ(line.value_or(preferencesChanged), preferencesChanged);
    }
    EXPECT_EQ(monitor.readLine(), "HotCorners: (nothing) -> false");
}

TEST_F(FarPhone, monitorTellsOfWhatThePhonesOwnProgramsChange) {
    RunningTrivel3ctl monitor(ctl, {"monitor"});
    ASSERT_EQ(monitor.readErrorLine(), "listening");
    expectTold(monitor, host);
    monitor.signal(SIGINT);
    EXPECT_EQ(monitor.wait(), 0);
}

TEST_F(FarPhone, monitorListensAnewAfterTheConnectionBroke) {
    Distance way{host.port(), std::chrono::milliseconds{1}};
    use(way.port());
    RunningTrivel3ctl monitor(ctl, {"monitor"});
    ASSERT_EQ(monitor.readErrorLine(), "listening");
    const int connections = way.connections();
    way.cut();
    expectTold(monitor, host);
    EXPECT_GT(way.connections(), connections);
}

TEST_F(FarPhone, monitorTellsOfUnannouncedChangesWithoutAnyCommandOnThePhone) {
    std::filesystem::remove(host.inside("bin/notifyutil"));
    RunningTrivel3ctl monitor(ctl, {"monitor", "--unannounced"});
    ASSERT_EQ(monitor.readErrorLine(), "listening");
    writeSettings(host.phone(), settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_EQ(monitor.readLine(), "unannounced");
    EXPECT_EQ(monitor.readLine(), "HotCorners: (nothing) -> false");
}

struct FarPhoneWithoutNotifyutil : FarPhone {
    FarPhoneWithoutNotifyutil() : FarPhone({.hasNotifyutil = false}) {}
};

TEST_F(FarPhoneWithoutNotifyutil, isChangedAndItIsSaidThatNobodyThereIsTold) {
    const Outcome outcome = ctl.run({"set", "HotCorners", "false"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(linesOf(outcome.errors), ElementsAre(HasSubstr("has no notifyutil")));
    EXPECT_EQ(readSettings(host.phone()), settingsOf({{"HotCorners", "<false/>"}}));
}

struct FarPhoneOfOneSession : FarPhone {
    FarPhoneOfOneSession() : FarPhone({.server = {"MaxSessions 1"}}) {}
};

TEST_F(FarPhoneOfOneSession, getsConnectionsOfTheirOwnForItsCommands) {
    expectDone(ctl.run({"set", "HotCorners", "false"}));
    EXPECT_THAT(host.posted(), ElementsAre(preferencesChanged));
}

}  // namespace
}  // namespace far_phones_test
