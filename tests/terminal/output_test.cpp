// SPDX-License-Identifier: MIT
#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

struct Output : testing::Test {
    Output() { ctl.usePhone(phone.folder); }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(Output, thatCannotBeWrittenIsAFailure) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    for (const Trivel3ctl::Arguments& arguments : {Trivel3ctl::Arguments{"show"},
                                                   {"show", "--json"},
                                                   {"get", "HotCorners"},
                                                   {"list"},
                                                   {"list", "--json"},
                                                   {"plist", "lint", phone.settingsFile()},
                                                   {"plist", "convert", "xml1", phone.settingsFile()},
                                                   {"--help"},
                                                   {"--version"}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        expectFailure(ctl.runInto("/dev/full", arguments), 1, "standard output cannot be written");
    }
}

TEST_F(Output, isNotNeededWhereNothingIsPrinted) {
    EXPECT_EQ(ctl.runInto("/dev/full", {"set", "HotCorners", "off"}).status, 0);
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
}

// Nothing more is done that nobody would hear of.
TEST_F(Output, driveStopsWhenItsAnswersCannotBeWritten) {
    const std::string commands = json{{"do", "show"}}.dump() + "\n" +
                                 json{{"do", "switch"}, {"row", "Hot Corners"}, {"on", false}}.dump() + "\n";
    expectFailure(ctl.runInto("/dev/full", {"drive"}, commands), 1, "standard output cannot be written");
    EXPECT_FALSE(fs::exists(phone.settingsFile()));
}

// Files that are opened take the lowest free numbers: no message may end up in one of them.
TEST_F(Output, closedStreamsDoNoHarm) {
    ctl.runThrough({"/bin/sh", "-c", "exec \"$@\" <&- >&- 2>&-", "sh"});
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 0);
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_EQ(ctl.run({"get", "HotCorners"}).status, 1);
    EXPECT_EQ(ctl.run({"set", "HotCorners", "maybe"}).status, 2);
    EXPECT_EQ(ctl.run({"drive"}).status, 0);
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
}

TEST_F(Output, messagesCannotSteerATerminal) {
    const std::string hostile = "a\x1b[31mb\a\nc\x7f\xC2\x9B";
    const std::string shown = "a\uFFFD[31mb\uFFFD\uFFFDc\uFFFD\uFFFD";
    const std::vector<Trivel3ctl::Arguments> wrong = {{"get", hostile},
                                                      {"set", hostile, "1"},
                                                      {"set", "HotCorners", hostile},
                                                      {"reset", hostile},
                                                      {"show", hostile},
                                                      {hostile},
                                                      {"show", "--" + hostile},
                                                      {"--device", hostile, "show"},
                                                      {"--phone", hostile, "show"},
                                                      {"plist", "lint", hostile},
                                                      {"plist", "convert", "xml1", hostile}};
    for (const Trivel3ctl::Arguments& arguments : wrong) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const Outcome outcome = ctl.run(arguments);
        expectFailure(outcome, outcome.status, shown);
        EXPECT_NE(outcome.status, 0);
    }
}

TEST_F(Output, labelsAndKeysCannotSteerATerminal) {
    addApplication(phone, "Evil&#x1b;[31m&#x9b;31mName");
    writeSettings(phone, settingsOf({{"HotCorners", "<string>§&#x1b;[31m&#x7f;&#x9b;31m</string>"}}));
    for (const Trivel3ctl::Arguments& arguments :
         {Trivel3ctl::Arguments{"show", "Advanced Options/Disable in Applications"},
          {"list"},
          {"show", "Advanced Options/Disable in Applications", "--json"},
          {"list", "--json"}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const Outcome outcome = ctl.run(arguments);
        expectDone(outcome);
        for (const char* control : {"\x1b", "\x7f", "\u009b"})
            EXPECT_THAT(outcome.output, Not(HasSubstr(control)));
    }
    EXPECT_THAT(ctl.run({"show", "Advanced Options/Disable in Applications"}).output, HasSubstr("Evil"));
    EXPECT_EQ(ctl.runForJson({"list", "--json"}).at(2).at("value"),
              "§\x1b[31m\x7f\u009b"
              "31m");
}

// A string is printed as it is: it may be meant for another program.
TEST_F(Output, getPrintsAStringAsItIs) {
    writeSettings(phone, settingsOf({{"Mine", "<string>&#x1b;[31m</string>"}}));
    EXPECT_EQ(ctl.run({"get", "Mine"}).output, "\x1b[31m\n");
}

}  // namespace
}  // namespace terminal_test
