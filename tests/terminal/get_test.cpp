// SPDX-License-Identifier: MIT
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace terminal_test {

using namespace kit;

namespace {

using testing::HasSubstr;

struct Get : testing::Test {
    Get() { ctl.usePhone(phone.folder); }

    // What is printed for a key that the file holds as this element.
    std::string printed(const std::string& element) {
        writeSettings(phone, settingsOf({{"Mine", element}}));
        const Outcome outcome = ctl.run({"get", "Mine"});
        expectDone(outcome);
        return outcome.output;
    }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(Get, defaultsAreOfTheirKinds) {
    EXPECT_EQ(ctl.run({"get", "MultiCenter"}).output, "true\n");
    EXPECT_EQ(ctl.run({"get", "DisableWithKeyboard"}).output, "false\n");
    EXPECT_EQ(ctl.run({"get", "MinimalControlCenterCondition"}).output, "1\n");
    EXPECT_EQ(ctl.run({"get", "AlbumArtworkAutoDisplay"}).output, "6\n");
    EXPECT_EQ(ctl.run({"get", "CloseAllAppsExceptions"}).output, propertyList("<dict/>\n"));
}

TEST_F(Get, storedValueGoesBeforeTheDefault) {
    writeSettings(phone,
                  settingsOf({{"MinimalControlCenterCondition", "<integer>0</integer>"}, {"MultiCenter", "<false/>"}}));
    EXPECT_EQ(ctl.run({"get", "MultiCenter"}).output, "false\n");
    EXPECT_EQ(ctl.run({"get", "MinimalControlCenterCondition"}).output, "0\n");
}

// Whatever kind the catalogue gives the key.
TEST_F(Get, storedValueIsPrintedAsItIs) {
    writeSettings(phone, settingsOf({{"MultiCenter", "<integer>5</integer>"}}));
    EXPECT_EQ(ctl.run({"get", "MultiCenter"}).output, "5\n");
}

TEST_F(Get, everyKindHasItsForm) {
    EXPECT_EQ(printed("<true/>"), "true\n");
    EXPECT_EQ(printed("<false/>"), "false\n");
    EXPECT_EQ(printed("<integer>-9223372036854775808</integer>"), "-9223372036854775808\n");
    EXPECT_EQ(printed("<integer>18446744073709551615</integer>"), "18446744073709551615\n");
    EXPECT_EQ(printed("<string>a &lt; b</string>"), "a < b\n");
    EXPECT_EQ(printed("<string></string>"), "\n");
    EXPECT_EQ(printed("<string>two\nlines\n</string>"), "two\nlines\n\n");
    EXPECT_EQ(printed("<real>0.5</real>"), propertyList("<real>0.5</real>\n"));
    EXPECT_EQ(printed("<date>2014-12-25T10:00:00Z</date>"), propertyList("<date>2014-12-25T10:00:00Z</date>\n"));
    EXPECT_EQ(printed("<data>AQI=</data>"), propertyList("<data>\nAQI=\n</data>\n"));
    EXPECT_EQ(printed("<array><true/></array>"), propertyList("<array>\n\t<true/>\n</array>\n"));
    EXPECT_EQ(printed("<dict><key>a</key><integer>1</integer></dict>"),
              propertyList("<dict>\n\t<key>a</key>\n\t<integer>1</integer>\n</dict>\n"));
}

TEST_F(Get, binaryFilesAreReadToo) {
    writeSettings(phone,
                  settingsOf({{"AlbumArtworkAutoDisplay", "<integer>3</integer>"}, {"MultiCenter", "<false/>"}}));
    expectDone(ctl.run({"plist", "convert", "binary1", phone.settingsFile(), "-o", phone.settingsFile()}));
    ASSERT_EQ(readSettings(phone).substr(0, 8), "bplist00");

    EXPECT_EQ(ctl.run({"get", "AlbumArtworkAutoDisplay"}).output, "3\n");
    EXPECT_EQ(ctl.run({"get", "MultiCenter"}).output, "false\n");
}

TEST_F(Get, keyThatReadsAsNothingIsAFailure) {
    expectFailure(ctl.run({"get", "OpenToLastAppWithQS"}), 1, "'OpenToLastAppWithQS' is not set and has no default");
    expectFailure(ctl.run({"get", "Mine"}), 1, "'Mine' is no known key");
}

// Keys are compared exactly, but the message helps.
TEST_F(Get, unknownKeyIsAFailureThatNamesTheNearest) {
    expectFailure(ctl.run({"get", "multicenter"}), 1, "did you mean 'MultiCenter'?");
    expectFailure(ctl.run({"get", "HotCorner"}), 1, "did you mean 'HotCorners'?");
    expectFailure(ctl.run({"get", "Foo"}), 1, "'Foo' is no known key; 'trivel3ctl list' names them all");
    expectFailure(ctl.run({"get", ""}), 1, "'' is no known key");
}

TEST_F(Get, veryLongKeyMakesAShortMessage) {
    const Outcome outcome = ctl.run({"get", std::string(100'000, 'x')});
    expectFailure(outcome, 1, "xxx...");
    EXPECT_LT(outcome.errors.size(), 200U);
}

TEST_F(Get, valueThatXmlCannotSayIsAFailure) {
    writeSettings(phone, settingsWithNull());
    expectFailure(ctl.run({"get", "Odd"}), 1, "'Odd' holds what an XML property list cannot say");
}

TEST_F(Get, severalValuesStandOnLinesOfTheirOwn) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<string>two\nlines</string>"}}));
    EXPECT_EQ(ctl.run({"get", "Mine", "HotCorners", "SliderActionsVolume"}).output, "two\nlines\nfalse\n2\n");
    expectFailure(ctl.run({"get", "HotCorners", "HotCorner"}), 1, "did you mean 'HotCorners'?");
}

TEST_F(Get, jsonIsTheValueAndOfSeveralAnObject) {
    EXPECT_EQ(ctl.runForJson({"get", "--json", "HotCorners"}), true);
    EXPECT_EQ(ctl.runForJson({"get", "--json", "HotCorners", "SliderActionsVolume"}),
              (json{{"HotCorners", true}, {"SliderActionsVolume", 2}}));
}

TEST_F(Get, saysWhenDefaultsStandInForAFileThatCannotBeRead) {
    writeSettings(phone, "no property list");
    for (const Trivel3ctl::Arguments& arguments :
         {Trivel3ctl::Arguments{"get", "HotCorners"}, Trivel3ctl::Arguments{"list"}, Trivel3ctl::Arguments{"show"}}) {
        const Outcome outcome = ctl.run(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.output, HasSubstr(arguments.front() == "show" ? "Multi-Center" : "true"));
        EXPECT_THAT(outcome.errors, HasSubstr("These are defaults: cannot read "));
    }
}

}  // namespace
}  // namespace terminal_test
