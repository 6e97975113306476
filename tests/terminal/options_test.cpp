// SPDX-License-Identifier: MIT
#include <set>

#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::set<std::string> pathsBelow(const std::string& folder) {
    std::set<std::string> paths;
    for (const auto& entry : fs::recursive_directory_iterator{folder})
        paths.insert(entry.path().lexically_relative(folder));
    return paths;
}

TEST(Options, defaultPhoneIsMadeOnFirstUseAsACopyOfTheSample) {
    Trivel3ctl ctl;
    ASSERT_FALSE(fs::exists(ctl.defaultPhone()));

    expectDone(ctl.run({"list"}));

    EXPECT_EQ(pathsBelow(ctl.defaultPhone()), pathsBelow(TRIVEL3_SAMPLE_PHONE));
}

TEST(Options, defaultPhoneKeepsItsSettingsFromRunToRun) {
    Trivel3ctl ctl;
    expectDone(ctl.run({"set", "HotCorners", "off"}));

    EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "false\n");
    EXPECT_TRUE(fs::exists(ctl.defaultPhone() + settingsPath));
}

TEST(Options, homeStandsInForTheDataFolder) {
    Trivel3ctl ctl;
    ctl.unset("XDG_DATA_HOME");

    expectDone(ctl.run({"list"}));

    EXPECT_TRUE(fs::exists(ctl.folder() / "home/.local/share/trivel3/phone"));
}

TEST(Options, nowhereToMakeTheDefaultPhoneIsAFailure) {
    Trivel3ctl ctl;
    ctl.unset("XDG_DATA_HOME");
    ctl.unset("HOME");

    expectFailure(ctl.run({"list"}), 1, "HOME is an absolute path; --phone names another phone");
}

TEST(Options, phoneIsNamedByTheOptionOrByTheEnvironment) {
    Trivel3ctl ctl;
    const Phone phone;
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));

    EXPECT_EQ(ctl.run({"--phone", phone.folder, "get", "HotCorners"}).output, "false\n");
    EXPECT_EQ(ctl.run({"get", "HotCorners", "--phone=" + phone.folder}).output, "false\n");
    ctl.usePhone(phone.folder);
    EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "false\n");
    EXPECT_FALSE(fs::exists(ctl.defaultPhone()));
}

TEST(Options, phoneOptionGoesBeforeTheEnvironment) {
    Trivel3ctl ctl;
    const Phone phone;
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    ctl.usePhone(ctl.folder() / "missing");

    EXPECT_EQ(ctl.run({"--phone", phone.folder, "get", "HotCorners"}).output, "false\n");
}

TEST(Options, emptyPhoneVariableNamesNone) {
    Trivel3ctl ctl;
    ctl.usePhone("");

    expectDone(ctl.run({"list"}));
    EXPECT_TRUE(fs::exists(ctl.defaultPhone()));
}

// A script whose variable is not set must not change the default phone instead.
TEST(Options, emptyPhoneOptionIsRefused) {
    Trivel3ctl ctl;

    expectFailure(ctl.run({"--phone", "", "set", "HotCorners", "off"}), 2, "--phone: an empty name is no folder");
    EXPECT_FALSE(fs::exists(ctl.defaultPhone()));
}

TEST(Options, namedPhoneIsNeverFilled) {
    Trivel3ctl ctl;
    const Phone phone;
    ctl.usePhone(phone.folder);

    const auto before = pathsBelow(phone.folder);
    expectDone(ctl.run({"show"}));
    expectDone(ctl.run({"show", "Advanced Options"}));
    expectDone(ctl.run({"list"}));
    expectDone(ctl.run({"get", "HotCorners"}));
    expectDone(ctl.run({"reset", "--all"}));
    expectDone(ctl.run({"drive"}, "{\"do\":\"show\"}\n"));

    EXPECT_EQ(pathsBelow(phone.folder), before);
}

TEST(Options, everySubcommandFailsWithoutThePhoneThatIsNamed) {
    Trivel3ctl ctl;
    ctl.usePhone(ctl.folder() / "missing");

    for (const Trivel3ctl::Arguments& arguments : {Trivel3ctl::Arguments{"show"},
                                                   {"get", "HotCorners"},
                                                   {"set", "HotCorners", "on"},
                                                   {"list"},
                                                   {"reset", "--all"},
                                                   {"monitor"},
                                                   {"drive"}}) {
        SCOPED_TRACE(arguments.front());
        expectFailure(ctl.run(arguments), 1, "missing: No such file or directory");
    }
    EXPECT_FALSE(fs::exists(ctl.folder() / "missing"));
}

TEST(Options, phoneThatIsAFileAndNoReportIsAFailure) {
    Trivel3ctl ctl;
    writeText(ctl.folder() / "file", "");

    expectFailure(ctl.run({"--phone", ctl.folder() / "file", "list"}), 1, "it is no support report");
    expectFailure(ctl.run({"--phone", ctl.folder() / "file", "set", "HotCorners", "off"}), 2, "a phone's folder alone");
}

TEST(Options, deviceGivesTheScreenItsShape) {
    Trivel3ctl ctl;
    const std::map<std::string, json> shapes = {{"phone-3.5", {0, 0, 320, 480}},
                                                {"phone-4", {0, 0, 320, 568}},
                                                {"phone-4.7", {0, 0, 375, 667}},
                                                {"phone-5.5", {0, 0, 414, 736}},
                                                {"tablet", {0, 0, 768, 1024}}};
    for (const auto& [name, frame] : shapes) {
        SCOPED_TRACE(name);
        Drive drive(ctl, {"--device", name});
        EXPECT_EQ(drive.send({{"do", "view"}}).at("view").at("frame"), frame);
    }
}

TEST(Options, deviceIsAFourInchPhoneUnlessSaid) {
    Trivel3ctl ctl;
    Drive drive(ctl);
    EXPECT_EQ(drive.send({{"do", "view"}}).at("view").at("frame"), json::array({0, 0, 320, 568}));
}

TEST(Options, unknownDeviceIsRefusedWithTheKnownOnes) {
    Trivel3ctl ctl;
    expectFailure(ctl.run({"--device", "phone-6", "show"}), 2, "phone-3.5,phone-4,phone-4.7,phone-5.5,tablet");
}

TEST(Options, versionNamesTheProgramAndItsNumber) {
    Trivel3ctl ctl;
    const Outcome outcome = ctl.run({"--version"});
    expectDone(outcome);
    EXPECT_EQ(outcome.output, "trivel3ctl " TRIVEL3_VERSION "\n");
}

TEST(Options, helpNamesEveryOptionAndSubcommand) {
    Trivel3ctl ctl;
    const Outcome outcome = ctl.run({"--help"});
    expectDone(outcome);
    for (const char* word : {"--phone", "TRIVEL3_PHONE", "--device", "--create", "--verbose", "--version", "--help",
                             "show", "get", "set", "list", "reset", "monitor", "plist", "drive"}) {
        EXPECT_THAT(outcome.output, HasSubstr(word));
    }
}

TEST(Options, helpOfASubcommandNamesItsOwnAndPointsToTheCommonOptions) {
    Trivel3ctl ctl;
    const std::map<std::string, std::vector<std::string>> words = {
        {"show", {"PAGE", "--json", "Advanced Options/Quick Launcher"}},
        {"get", {"KEY"}},
        {"set", {"KEY", "VALUE", "--type", "boolean"}},
        {"list", {"--json"}},
        {"reset", {"KEY", "--all"}},
        {"monitor", {"--json"}},
        {"drive", {"--can-open", "SCHEME"}}};
    for (const auto& [command, expected] : words) {
        const Outcome outcome = ctl.run({command, "--help"});
        expectDone(outcome);
        for (const std::string& word : expected)
            EXPECT_THAT(outcome.output, HasSubstr(word));
        EXPECT_THAT(outcome.output, HasSubstr("--phone and --device"));
    }
}

TEST(Options, helpPointsToNoOptionThatIsNotThere) {
    Trivel3ctl ctl;
    for (const Trivel3ctl::Arguments& words : {Trivel3ctl::Arguments{"help", "--help"},
                                               {"plist", "--help"},
                                               {"plist", "lint", "--help"},
                                               {"plist", "convert", "--help"}}) {
        const Outcome outcome = ctl.run(words);
        expectDone(outcome);
        EXPECT_THAT(outcome.output, Not(HasSubstr("--phone"))) << words.front();
        EXPECT_THAT(outcome.output, Not(HasSubstr("Without a subcommand"))) << words.front();
    }
}

TEST(Options, helpMakesNoPhone) {
    Trivel3ctl ctl;
    ctl.run({"show", "--help"});
    EXPECT_FALSE(fs::exists(ctl.defaultPhone()));
}

TEST(Options, helpCommandPrintsWhatTheOptionDoes) {
    Trivel3ctl ctl;
    EXPECT_EQ(ctl.run({"help", "set"}).output, ctl.run({"set", "--help"}).output);
    EXPECT_EQ(ctl.run({"help", "plist", "lint"}).output, ctl.run({"plist", "lint", "--help"}).output);
    EXPECT_EQ(ctl.run({"help"}).output, ctl.run({"--help"}).output);
    expectFailure(ctl.run({"help", "frobnicate"}), 2, "'frobnicate' is no subcommand");
    EXPECT_FALSE(fs::exists(ctl.defaultPhone()));
}

TEST(Options, helpFitsTheTerminal) {
    Trivel3ctl ctl;
    for (const unsigned short width : std::initializer_list<unsigned short>{60, 80}) {
        std::istringstream lines(ctl.runOnTerminal({"set", "--help"}, width).output);
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(line.find_last_not_of("\r\n") + 1, std::size_t{width}) << line;
    }
}

TEST(Options, wrongCommandLinesAreRefusedWithTheWayToMendThem) {
    Trivel3ctl ctl;
    const std::vector<std::pair<Trivel3ctl::Arguments, std::string>> wrong = {
        {{"shwo"}, "'shwo' is no subcommand; did you mean 'show'?"},
        {{"--frobnicate", "show"}, "--frobnicate"},
        {{"show", "--frobnicate"}, "--frobnicate (see 'trivel3ctl show --help')"},
        {{"show", "a", "b"}, "not expected: b"},
        {{"get"}, "KEY is required (see 'trivel3ctl get --help')"},
        {{"show", "a", "b", "c"}, "not expected: b c"},
        {{"set", "HotCorners"}, "the last KEY lacks its VALUE"},
        {{"set", "Mine", "1", "--type", "float"}, "boolean,integer,string"},
        {{"frobnicate"}, "'frobnicate' is no subcommand (see 'trivel3ctl --help')"},
        {{"unset"}, "name the settings to remove, or give --all"},
        {{"unset", "--all", "HotCorners"}, "excludes --all"},
        {{"diff", "a", "b", "c"}, "not expected: c"},
        {{"apply"}, "FILE is required"},
        {{"reset"}, "name the settings to reset, or give --all"},
        {{"reset", "--all", "HotCorners"}, "excludes --all"},
        {{"drive", "--can-open"}, "--can-open"},
        {{"plist"}, "subcommand is required (see 'trivel3ctl plist --help')"},
        {{"plist", "lnit"}, "'lnit' is no subcommand; did you mean 'lint'?"},
        {{"plist", "lint"}, "FILE is required"},
        {{"plist", "convert", "xml1"}, "FILE is required"},
        {{"plist", "convert", "yaml", "file"}, "xml1,binary1,json"},
        {{"--phone"}, "--phone"},
        {{"--color", "blue", "show"}, "auto,always,never"},
        {{"--device"}, "--device"}};
    for (const auto& [arguments, reason] : wrong) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        expectFailure(ctl.run(arguments), 2, reason);
    }
    EXPECT_FALSE(fs::exists(ctl.defaultPhone()));
}

// Only the first word is looked for among the subcommands.
TEST(Options, pagesKeysAndValuesMayBeNamedAsSubcommandsAre) {
    Trivel3ctl ctl;
    expectFailure(ctl.run({"show", "list"}), 1, "no page 'list'");
    expectFailure(ctl.run({"get", "show"}), 1, "'show'");
    expectDone(ctl.run({"set", "Mine", "drive", "--type", "string"}));
    EXPECT_EQ(ctl.run({"get", "Mine"}).output, "drive\n");
}

TEST(Options, aSystemImageWithoutThePaneIsAFailure) {
    Trivel3ctl ctl;
    ctl.set("TRIVEL3_SYSTEM_IMAGE", ctl.folder() / "nothing");
    expectFailure(ctl.run({"show"}), 1, "Trivel3Preferences.bundle: no such bundle; install the program again");
}

TEST(Options, aPaneThatIsNoModuleIsAFailure) {
    Trivel3ctl ctl;
    const std::string image = ctl.folder() / "image";
    const std::string bundle = image + "/Library/PreferenceBundles/Trivel3Preferences.bundle";
    writeText(bundle + "/Info.plist", readText(TRIVEL3_BUNDLE "/Info.plist"));
    writeText(bundle + "/Trivel3Preferences", "no module");
    ctl.set("TRIVEL3_SYSTEM_IMAGE", image);

    expectFailure(ctl.run({"show"}), 1, "install the program again");
    expectFailure(ctl.run({"get", "HotCorners"}), 1, "install the program again");
}

}  // namespace
}  // namespace terminal_test
