// SPDX-License-Identifier: MIT
#include <fcntl.h>

#include <csignal>
#include <memory>

#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/private_bus.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;

const char* const changed = "com.fenwary.trivel3.preferencesChanged";
const char* const exceptionsChanged = "com.fenwary.trivel3.exceptionsChanged";

struct Monitor : testing::Test {
    Monitor() {
        ctl.usePhone(phone.folder);
        ctl.set("DBUS_SESSION_BUS_ADDRESS", bus.address());
    }

    std::unique_ptr<RunningTrivel3ctl> listen(const Trivel3ctl::Arguments& options = {}) {
        Trivel3ctl::Arguments arguments{"monitor"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        auto monitor = std::make_unique<RunningTrivel3ctl>(ctl, arguments);
        EXPECT_EQ(monitor->readErrorLine(), "listening");
        return monitor;
    }

    PrivateBus bus;
    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(Monitor, tellsOfWhatAnotherProcessSets) {
    const auto monitor = listen();
    expectDone(ctl.run({"set", "HotCorners", "off"}));
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "HotCorners: (nothing) -> false");

    expectDone(ctl.run({"set", "HotCorners", "on"}));
    expectDone(ctl.run({"set", "AlbumArtworkAutoDisplay", "1"}));
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "HotCorners: false -> true");
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "AlbumArtworkAutoDisplay: (nothing) -> 1");
}

TEST_F(Monitor, tellsOfWhatIsDriven) {
    const auto monitor = listen();
    Drive drive(ctl);
    drive.moveSwitch("Multi-Center", false);
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "MultiCenter: (nothing) -> false");
    drive.moveSwitch("Multi-Center", true);
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "MultiCenter: false -> true");
}

TEST_F(Monitor, tellsAProgramInJson) {
    const auto monitor = listen({"--json"});
    expectDone(ctl.run({"set", "HotCorners", "off"}));
    EXPECT_EQ(
        json::parse(monitor->readLine().value_or("")),
        (json{{"notification", changed}, {"changes", {{{"key", "HotCorners"}, {"old", nullptr}, {"new", false}}}}}));
    expectDone(ctl.run({"set", "HotCorners", "on"}));
    EXPECT_EQ(json::parse(monitor->readLine().value_or("")),
              (json{{"notification", changed}, {"changes", {{{"key", "HotCorners"}, {"old", false}, {"new", true}}}}}));
}

// The add-on is told after every write, and so is whoever watches.
TEST_F(Monitor, tellsOfWritesThatChangeNothing) {
    expectDone(ctl.run({"set", "HotCorners", "off"}));
    const auto monitor = listen({"--json"});
    expectDone(ctl.run({"set", "HotCorners", "off"}));
    EXPECT_EQ(json::parse(monitor->readLine().value_or("")),
              (json{{"notification", changed}, {"changes", json::array()}}));
}

TEST_F(Monitor, valuesOfAnotherKindAreChanges) {
    writeSettings(phone, settingsOf({{"HotCorners", "<integer>1</integer>"}}));
    const auto monitor = listen();
    expectDone(ctl.run({"set", "HotCorners", "1"}));
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "HotCorners: 1 -> true");
}

TEST_F(Monitor, keysThatGoAreChanges) {
    writeSettings(phone, settingsOf({{"Mine", "<string>text</string>"}}));
    const auto monitor = listen({"--json"});
    writeSettings(phone, "damaged");
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 0);
    const json changes = json::parse(monitor->readLine().value_or("")).at("changes");
    EXPECT_EQ(changes, json::array({{{"key", "Mine"}, {"old", "text"}, {"new", nullptr}},
                                    {{"key", "HotCorners"}, {"old", nullptr}, {"new", false}}}));
}

TEST_F(Monitor, ticksAreToldOneByOne) {
    addApplication(phone, "Kettle");
    writeSettings(phone, settingsOf({{"CloseAllAppsExceptions", "<dict><key>example.other</key><true/></dict>"}}));
    const auto monitor = listen();
    Drive drive(ctl);
    drive.tap("Advanced Options");
    drive.tap("Close All Apps");
    drive.tap("Kettle");
    // Opening the pages may have repaired a setting and announced that.
    std::string line = monitor->readLine().value_or("");
    while (!line.starts_with("CloseAllAppsExceptions") && !line.empty())
        line = monitor->readLine().value_or("");
    EXPECT_EQ(line, "CloseAllAppsExceptions: (1 entry) -> (2 entries)");
    EXPECT_EQ(monitor->readLine(), "  example.named: (nothing) -> true");
}

TEST_F(Monitor, tellsOfTheExceptionsFileUnderItsOwnNotification) {
    addApplication(phone, "Kettle");
    const auto monitor = listen({"--json"});
    Drive drive(ctl);
    drive.tap("Advanced Options");
    drive.tap("Disable in Applications");
    drive.tap("Kettle");
    json told = json::parse(monitor->readLine().value_or("{}"));
    while (told.value("notification", "") == changed)
        told = json::parse(monitor->readLine().value_or("{}"));
    EXPECT_EQ(told, (json{{"notification", exceptionsChanged},
                          {"changes", {{{"key", "example.named"}, {"old", nullptr}, {"new", true}}}}}));
}

TEST_F(Monitor, looksDoNotCount) {
    writeSettings(phone, settingsOf({{"MultiCenter", "<false/>"}}));
    const auto monitor = listen();
    expectDone(ctl.run({"show", "Advanced Options"}));
    expectDone(ctl.run({"get", "HotCorners"}));
    expectDone(ctl.run({"list"}));
    expectDone(ctl.run({"set", "HotCorners", "off"}));
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "HotCorners: (nothing) -> false");
}

TEST_F(Monitor, failedWritesAreAnnouncedWithoutChanges) {
    fs::create_directories(phone.settingsFile());
    const auto monitor = listen({"--json"});
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 1);
    EXPECT_EQ(json::parse(monitor->readLine().value_or("")),
              (json{{"notification", changed}, {"changes", json::array()}}));
}

TEST_F(Monitor, keysAndValuesCannotSteerATerminal) {
    const auto monitor = listen();
    // As another program writes it: ours would not.
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"a\x1b]0;b\a", "<string>c\x1b[2J\nd</string>"}}));
    expectDone(ctl.run({"set", "HotCorners", "on"}));
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "HotCorners: (nothing) -> true");
    EXPECT_EQ(monitor->readLine(), "a\uFFFD]0;b\uFFFD: (nothing) -> c\uFFFD[2J\uFFFDd");
}

TEST_F(Monitor, tellsWhatNobodyHasAnnouncedWhereThatIsAskedFor) {
    const auto monitor = listen({"--unannounced"});
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_EQ(monitor->readLine(), "unannounced");
    EXPECT_EQ(monitor->readLine(), "HotCorners: (nothing) -> false");
    expectDone(ctl.run({"set", "HotCorners", "on"}));
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "HotCorners: false -> true");
    // What has been announced is told once.
    std::filesystem::remove(phone.settingsFile());
    EXPECT_EQ(monitor->readLine(), "unannounced");
    EXPECT_EQ(monitor->readLine(), "HotCorners: true -> (nothing)");
}

TEST_F(Monitor, tellsWhatNobodyHasAnnouncedAsJsonWithoutANotification) {
    const auto monitor = listen({"--unannounced", "--json"});
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    const auto line = monitor->readLine();
    ASSERT_TRUE(line);
    EXPECT_EQ(json::parse(*line), json::parse(R"({"notification":null,"changes":[
                                                 {"key":"HotCorners","old":null,"new":false}]})"));
}

TEST_F(Monitor, keepsToNotificationsUnlessAskedForMore) {
    const auto monitor = listen();
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    // A monitor that is asked for more has told by the time at which it says so.
    const auto other = listen({"--unannounced"});
    writeSettings(phone, settingsOf({{"HotCorners", "<true/>"}}));
    ASSERT_EQ(other->readLine(), "unannounced");
    expectDone(ctl.run({"set", "SliderActionsVolume", "1"}));
    EXPECT_EQ(monitor->readLine(), changed);
    EXPECT_EQ(monitor->readLine(), "HotCorners: (nothing) -> true");
}

TEST_F(Monitor, interruptEndsItInGoodOrder) {
    for (const int number : {SIGINT, SIGTERM}) {
        const auto monitor = listen();
        monitor->signal(number);
        const Outcome outcome = monitor->finish();
        expectDone(outcome);
        EXPECT_EQ(outcome.output, "");
    }
}

TEST_F(Monitor, endOfTheBusIsAFailure) {
    const auto monitor = listen();
    bus.stop();
    expectFailure(monitor->finish(), 1, "the session bus is gone");
}

TEST_F(Monitor, outputThatNobodyTakesEndsIt) {
    Drive drive(ctl);
    const hosts::Descriptor full{::open("/dev/full", O_WRONLY | O_CLOEXEC)};
    ChildProcess monitor(ctl.commandFor({"monitor"}), ctl.environment(), full.get());
    ASSERT_EQ(monitor.readErrorLine(), "listening");
    drive.moveSwitch("Hot Corners", false);
    expectFailure(monitor.finish(), 1, "standard output cannot be written");
}

TEST_F(Monitor, withoutABusItIsAFailure) {
    ctl.set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (ctl.folder() / "no-bus"));
    expectFailure(ctl.run({"monitor"}), 1, "no session bus");
    ctl.unset("DBUS_SESSION_BUS_ADDRESS");
    expectFailure(ctl.run({"monitor"}), 1, "no session bus");
    // Writing does without.
    expectDone(ctl.run({"set", "HotCorners", "off"}));
}

}  // namespace
}  // namespace terminal_test
