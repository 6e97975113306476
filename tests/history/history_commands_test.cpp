// SPDX-License-Identifier: MIT
#include <filesystem>

#include "hosts/system/state_folder.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/private_mounts.h"
#include "tests/kit/trivel3ctl.h"

namespace history_commands_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

struct HistoryCommands : testing::Test {
    HistoryCommands() { ctl.usePhone(phone.folder); }

    std::string state() const { return ctl.folder() / "state/trivel3"; }
    json history() const { return ctl.runForJson({"history", "--json"}); }
    void set(const std::string& key, const std::string& value) const { expectDone(ctl.run({"set", key, value})); }
    Outcome drive(const std::vector<json>& commands) const {
        std::string lines;
        for (const json& command : commands)
            lines += command.dump() + "\n";
        Outcome outcome = ctl.run({"drive"}, lines);
        expectDone(outcome);
        return outcome;
    }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(HistoryCommands, tellWhatWasChangedNewestFirst) {
    set("HotCorners", "off");
    set("HotCorners", "on");
    const json all = history();
    ASSERT_THAT(all, SizeIs(2));
    EXPECT_EQ(all[0]["time"].get<std::string>().size(), std::string("2026-01-01T00:00:00Z").size());
    json newest = all[0];
    newest.erase("time");
    EXPECT_EQ(newest, json({{"change", 2},
                            {"turn", 2},
                            {"file", settingsPath},
                            {"key", "HotCorners"},
                            {"entry", nullptr},
                            {"old", false},
                            {"new", true},
                            {"undone", false}}));
    EXPECT_FALSE(all[1].contains("old")) << "what was absent is no null";
    const Outcome text = ctl.run({"history"});
    expectDone(text);
    EXPECT_THAT(linesOf(text.output),
                ElementsAre(HasSubstr("HotCorners: false -> true"), HasSubstr("HotCorners: (nothing) -> false")));
}

TEST_F(HistoryCommands, keepNothingOfAChangeThatChangesNothing) {
    set("HotCorners", "off");
    set("HotCorners", "off");
    EXPECT_THAT(history(), SizeIs(1));
}

TEST_F(HistoryCommands, touchNothingWhenSettingsAreOnlyRead) {
    writeSettings(phone, settingsOf({{"MultiCenter", "<false/>"}, {"PeopleInToday", "<true/>"}}));
    const std::string before = readSettings(phone);
    for (const Trivel3ctl::Arguments& arguments : {Trivel3ctl::Arguments{"get", "HotCorners"},
                                                   {"list"},
                                                   {"history"},
                                                   {"show"},
                                                   {"show", "Advanced Options"},
                                                   {"history", "--forget"}})
        expectDone(ctl.run(arguments));
    EXPECT_FALSE(fs::exists(state() + "/history"));
    EXPECT_EQ(readSettings(phone), before);
}

TEST_F(HistoryCommands, undoingTwiceComesBack) {
    set("HotCorners", "off");
    const std::string first = readSettings(phone);
    set("SliderActionsVolume", "2");
    const std::string second = readSettings(phone);
    const Outcome undone = ctl.run({"undo"});
    expectDone(undone);
    EXPECT_EQ(undone.output, "SliderActionsVolume: 2 -> (nothing)\n");
    EXPECT_EQ(readSettings(phone), first);
    EXPECT_EQ(history()[1]["undone"], true);
    expectDone(ctl.run({"undo"}));
    EXPECT_EQ(readSettings(phone), second);
    EXPECT_EQ(history()[2]["undone"], false);
}

TEST_F(HistoryCommands, undoATurnWithItsRepairs) {
    writeSettings(phone, settingsOf({{"AccessAppSwitcher", "<false/>"},
                                     {"MinimalControlCenterCondition", "<integer>6</integer>"},
                                     {"MinimalControlCenterEnabled", "<true/>"},
                                     {"ReachabilityMode", "<false/>"}}));
    const std::string before = readSettings(phone);
    drive(
        {{{"do", "tap"}, {"row", "Advanced Options"}}, {{"do", "switch"}, {"row", "Reachable Display"}, {"on", true}}});
    ASSERT_THAT(history(), SizeIs(2)) << "the repair that follows the switch is a change too";
    EXPECT_EQ(history()[0]["turn"], history()[1]["turn"]);
    expectDone(ctl.run({"undo"}));
    EXPECT_EQ(readSettings(phone), before);
}

TEST_F(HistoryCommands, undoOneChangeOfATurnAlone) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"MultiCenter", "<false/>"}}));
    expectDone(ctl.run({"reset", "--all"}));
    ASSERT_THAT(history(), SizeIs(2));
    ASSERT_EQ(history()[1]["key"], "HotCorners");
    expectDone(ctl.run({"undo", "1"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}, {"MultiCenter", "<true/>"}}));
    expectFailure(ctl.run({"undo", "1"}), 1, "change 1 has been undone already");
    expectFailure(ctl.run({"undo", "99"}), 1, "there is no change 99");
    expectDone(ctl.run({"undo", "2"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}, {"MultiCenter", "<false/>"}}));
}

TEST_F(HistoryCommands, undoTicksOneByOne) {
    fs::copy(TRIVEL3_SAMPLE_PHONE, phone.folder, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    fs::remove(phone.settingsFile());
    drive({{{"do", "tap"}, {"row", "Advanced Options"}},
           {{"do", "tap"}, {"row", "Close All Apps"}},
           {{"do", "tap"}, {"row", "Camera"}},
           {{"do", "tap"}, {"row", "Maps"}}});
    std::map<std::string, json> ticks;
    for (const json& entry : history()) {
        if (entry["key"] == "CloseAllAppsExceptions") ticks[entry["entry"]] = entry["change"];
    }
    ASSERT_THAT(ticks, SizeIs(2));
    const auto kept = [&] { return ctl.run({"get", "CloseAllAppsExceptions"}).output; };
    const auto& [first, change] = *ticks.begin();
    expectDone(ctl.run({"undo", to_string(change)}));
    EXPECT_THAT(kept(), testing::Not(HasSubstr(first)));
    EXPECT_THAT(kept(), HasSubstr(ticks.rbegin()->first));
    expectDone(ctl.run({"undo", to_string(ticks.rbegin()->second)}));
    EXPECT_THAT(readSettings(phone), testing::Not(HasSubstr("CloseAllAppsExceptions")));
}

TEST_F(HistoryCommands, undoNothingThatHasBeenChangedSince) {
    set("SliderActionsVolume", "1");
    writeSettings(phone, settingsOf({{"Other", "<true/>"}, {"SliderActionsVolume", "<integer>2</integer>"}}));
    const std::string before = readSettings(phone);
    expectFailure(ctl.run({"undo"}), 1, "'SliderActionsVolume' has been changed since change 1");
    EXPECT_EQ(readSettings(phone), before);
    const Outcome forced = ctl.run({"undo", "--force"});
    expectDone(forced);
    EXPECT_EQ(forced.output, "SliderActionsVolume: 2 -> (nothing)\n");
    EXPECT_EQ(readSettings(phone), settingsOf({{"Other", "<true/>"}}));
    expectDone(ctl.run({"undo"}));
    EXPECT_EQ(readSettings(phone), before) << "what was overwritten comes back";
}

TEST_F(HistoryCommands, undoAKeyThatIsGoneOnlyByForce) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    set("HotCorners", "on");
    fs::remove(phone.settingsFile());
    expectFailure(ctl.run({"undo"}), 1, "'HotCorners' has been changed since change 1");
    expectDone(ctl.run({"undo", "--force"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
}

TEST_F(HistoryCommands, haveNothingToUndoAtFirst) {
    expectFailure(ctl.run({"undo"}), 1, "there is nothing to undo");
}

TEST_F(HistoryCommands, undoWhatCannotBeWrittenFails) {
    set("HotCorners", "off");
    fs::remove(phone.settingsFile());
    fs::create_directory(phone.settingsFile());
    expectFailure(ctl.run({"undo", "--force"}), 1, "cannot write");
    EXPECT_EQ(history()[0]["undone"], false);
}

TEST_F(HistoryCommands, nameWhatIsKeptOfAFileThatCouldNotBeUnderstood) {
    const std::string damaged = "no property list \x01\xff";
    writeSettings(phone, damaged);
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 0);
    EXPECT_THAT(ctl.run({"history"}).output, HasSubstr(state() + "/kept/"));
    const Outcome bytes = ctl.run({"history", "--bytes", "1"});
    expectDone(bytes);
    EXPECT_EQ(bytes.output, damaged);
    set("HotCorners", "on");
    expectFailure(ctl.run({"history", "--bytes", "2"}), 1, "written over nothing");
    expectDone(ctl.run({"history", "--forget"}));
    EXPECT_EQ(history(), json::array());
    EXPECT_THAT(namesIn(state() + "/kept"), IsEmpty());
    EXPECT_THAT(namesIn(state() + "/history"), IsEmpty());
}

TEST_F(HistoryCommands, giveBackWhatHadToStayOnThePhone) {
    writeText(state() + "/kept", "no folder");
    writeSettings(phone, "no property list");
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 0);
    const Outcome bytes = ctl.run({"history", "--bytes", "1"});
    expectDone(bytes);
    EXPECT_EQ(bytes.output, "no property list");
}

TEST_F(HistoryCommands, areNoObstacleToAChangeWhenTheHistoryCannotBeWritten) {
    writeText(state() + "/history", "no folder");
    const Outcome outcome = ctl.run({"set", "HotCorners", "off"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, AllOf(HasSubstr("is not in the history"), HasSubstr(state() + "/history")));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_EQ(ctl.run({"history"}).status, 0);
    expectFailure(ctl.run({"undo"}), 1, "there is nothing to undo");
}

TEST_F(HistoryCommands, tellOfDamagedLines) {
    set("HotCorners", "off");
    set("HotCorners", "on");
    const std::string file = state() + "/history/" + namesIn(state() + "/history").at(0);
    std::string text = readText(file);
    text[30] = '!';
    writeText(file, text);
    const Outcome outcome = ctl.run({"history"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(linesOf(outcome.output), SizeIs(1));
    EXPECT_THAT(outcome.errors, HasSubstr("1 line of the history is damaged and left out"));
}

TEST_F(HistoryCommands, refuseTheChangesOfAnotherPhoneInTheSamePlace) {
    const auto putDevice = [&](const char* identifier) {
        writeText(phone / "device-information.plist",
                  settingsOf({{"UniqueDeviceID", "<string>" + std::string(identifier) + "</string>"}}));
    };
    putDevice("one");
    set("HotCorners", "off");
    putDevice("two");
    EXPECT_EQ(history(), json::array());
    expectFailure(ctl.run({"undo"}), 1, "there is nothing to undo");
    expectFailure(ctl.run({"undo", "1", "--force"}), 1, "change 1 was made on another phone");
    set("HotCorners", "on");
    EXPECT_EQ(history().at(0)["change"], 2);
    expectDone(ctl.run({"history", "--forget"}));
    putDevice("one");
    EXPECT_EQ(history().at(0)["change"], 1);
}

TEST_F(HistoryCommands, refuseTheChangesOfAPhoneThatWasMountedInTheSamePlace) {
    if (!mayMount()) GTEST_SKIP() << noMounts;
    const std::string mount = "mount -t tmpfs -o size=1m %s '" + phone.folder + "'; mkdir '" + phone.folder + "/var'";
    const auto mountOf = [&](const std::string& source) {
        return std::string(mount).replace(mount.find("%s"), 2, source);
    };
    ctl.runThrough(
        {"/usr/bin/unshare", "-rm", "/bin/sh", "-ec",
         mountOf("one") + "; \"$1\" set HotCorners off; umount '" + phone.folder + "'; " + mountOf("two") + "; \"$@\"",
         "sh"});
    EXPECT_EQ(history(), json::array());
    expectFailure(ctl.run({"undo", "1"}), 1, "change 1 was made on another phone");
}

TEST_F(HistoryCommands, twoAtOnceUndoATurnOnceOrComeBack) {
    for (int round = 0; round < 10; ++round) {
        expectDone(ctl.run({"set", "OwnNumber", std::to_string(round), "--type", "integer"}));
        const std::string changed = readSettings(phone);
        RunningTrivel3ctl one(ctl, {"undo"});
        RunningTrivel3ctl other(ctl, {"undo"});
        const int done = (one.finish().status == 0 ? 1 : 0) + (other.finish().status == 0 ? 1 : 0);
        EXPECT_GE(done, 1);
        EXPECT_EQ(readSettings(phone) == changed, done == 2);
        expectDone(ctl.run({"history", "--forget"}));
    }
}

TEST_F(HistoryCommands, areWrittenByProgramsThatChangeAtOnce) {
    std::vector<std::unique_ptr<RunningTrivel3ctl>> programs;
    for (int program = 0; program < 8; ++program) {
        programs.push_back(std::make_unique<RunningTrivel3ctl>(
            ctl, Trivel3ctl::Arguments{"set", "Key" + std::to_string(program), "x", "--type", "string"}));
    }
    for (const auto& program : programs)
        expectDone(program->finish());
    ASSERT_THAT(history(), SizeIs(8));
    for (int undos = 0; undos < 8; ++undos)
        expectDone(ctl.run({"undo", std::to_string(8 - undos)}));
    EXPECT_EQ(readSettings(phone), propertyList("<dict/>\n"));
}

}  // namespace
}  // namespace history_commands_test
