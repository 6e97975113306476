// SPDX-License-Identifier: MIT
// Whatever stands on a line, it is answered on one line, and the next one is read as usual.
#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

using testing::HasSubstr;

struct DriveLines : testing::Test {
    DriveLines() { ctl.usePhone(phone.folder); }

    void expectNoObject(Drive& drive, const std::string& line) {
        SCOPED_TRACE(line.substr(0, 60));
        EXPECT_EQ(drive.sendLine(line), (json{{"ok", false}, {"error", "the line is no JSON object"}}));
    }

    void expectRefused(Drive& drive, const std::string& line, const std::string& reason) {
        SCOPED_TRACE(line.substr(0, 60));
        const json answer = drive.sendLine(line);
        EXPECT_EQ(answer.at("ok"), false);
        EXPECT_THAT(answer.at("error").get<std::string>(), HasSubstr(reason));
        EXPECT_EQ(answer.at("events"), json::array());
        EXPECT_EQ(answer.at("page").at("title"), "Trivel 3");
    }

    void expectAtWork(Drive& drive) { EXPECT_EQ(drive.show().at("ok"), true); }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(DriveLines, linesThatAreNoObjectAreAnsweredAndPassedOver) {
    Drive drive(ctl);
    for (const std::string line : {"",
                                   " ",
                                   "nonsense",
                                   "{",
                                   "}",
                                   "{\"do\":\"show\"",
                                   "{\"do\":\"show\"}}",
                                   "{\"do\":\"show\"} {}",
                                   "{'do':'show'}",
                                   "{\"do\" \"show\"}",
                                   "{\"do\":show}",
                                   "{\"do\":\"show\",}",
                                   "[]",
                                   "[{\"do\":\"show\"}]",
                                   "null",
                                   "true",
                                   "1",
                                   "1e999",
                                   "\"show\"",
                                   "{\"do\":\"show\",\"x\":1e999}",
                                   "{\"do\":\"\\ud800\"}",
                                   "{\"do\":\"\\x\"}",
                                   "// show"}) {
        expectNoObject(drive, line);
    }
    expectAtWork(drive);
}

TEST_F(DriveLines, invalidUtf8IsNoJson) {
    Drive drive(ctl);
    for (const std::string bytes : {"\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\x80"})
        expectNoObject(drive, "{\"do\":\"" + bytes + "\"}");
    expectNoObject(drive, std::string("{\"do\":\"sh\0ow\"}", 14));
    expectNoObject(drive, std::string("\0", 1));
    expectAtWork(drive);
}

TEST_F(DriveLines, blanksAndCarriageReturnsAreJson) {
    Drive drive(ctl);
    EXPECT_EQ(drive.sendLine(" \t{ \"do\" : \"show\" } \r").at("ok"), true);
}

TEST_F(DriveLines, otherFieldsArePassedOver) {
    Drive drive(ctl);
    EXPECT_EQ(drive.sendLine(R"({"id":7,"do":"show","note":{"a":[1,{"do":"back"}]},"list":[[]]})").at("ok"), true);
}

TEST_F(DriveLines, lastOfEqualFieldsCounts) {
    Drive drive(ctl);
    EXPECT_EQ(drive.sendLine(R"({"do":"back","do":"show"})").at("ok"), true);
    drive.show();
    expectRefused(drive, R"({"do":"show","do":["show"]})", "\"do\"");
    expectRefused(drive, R"({"do":"tap","row":{"section":0,"row":0},"row":5})", "\"row\" takes");
}

TEST_F(DriveLines, commandsThatMakeNoSenseAreRefused) {
    Drive drive(ctl);
    drive.show();
    expectRefused(drive, "{}", "\"do\" names the command; it is missing");
    expectRefused(drive, R"({"do":1})", "\"do\" names the command");
    expectRefused(drive, R"({"do":null})", "\"do\" names the command");
    expectRefused(drive, R"({"do":{"do":"show"}})", "\"do\" names the command");
    expectRefused(drive, R"({"do":"dance"})", "there is no command 'dance'");
    expectRefused(drive, R"({"do":"Show"})", "there is no command 'Show'");
    expectRefused(drive, R"({"do":"get"})", "\"key\"");
    expectRefused(drive, R"({"do":"get","key":1})", "\"key\"");
}

TEST_F(DriveLines, rowsOfTheWrongFormAreRefused) {
    Drive drive(ctl);
    drive.show();
    for (const char* row : {"null", "1", "true", "[]", "[0,0]", "{}", R"({"section":0})", R"({"row":0})",
                            R"({"section":"0","row":0})", R"({"section":0,"row":-1})", R"({"section":0.0,"row":0})",
                            R"({"section":0,"row":[0]})", R"({"section":{"section":0},"row":0})"}) {
        expectRefused(drive, std::string(R"({"do":"tap","row":)") + row + "}", "\"row\" takes a label or");
    }
    expectRefused(drive, R"({"do":"tap"})", "\"row\" takes a label or");
    expectRefused(drive, R"({"do":"switch","on":true})", "\"row\" takes a label or");
    expectRefused(drive, R"({"do":"tap","label":"The Creators"})", "\"row\" takes a label or");
}

TEST_F(DriveLines, switchesTakeTrueOrFalse) {
    Drive drive(ctl);
    drive.show();
    expectRefused(drive, R"({"do":"switch","row":"Hot Corners"})", "\"on\" takes true or false");
    for (const char* state : {"1", "0", "\"true\"", "null", "[true]"}) {
        expectRefused(drive, std::string(R"({"do":"switch","row":"Hot Corners","on":)") + state + "}",
                      "\"on\" takes true or false");
    }
    EXPECT_FALSE(std::filesystem::exists(phone.settingsFile()));
}

TEST_F(DriveLines, composersTakeFourResults) {
    Drive drive(ctl);
    drive.show();
    expectRefused(drive, R"({"do":"composer","result":"sent"})", "no composer is presented");
    expectRefused(drive, R"({"do":"composer"})", "\"result\" takes");
    expectRefused(drive, R"({"do":"composer","result":"Sent"})", "\"result\" takes");
    expectRefused(drive, R"({"do":"composer","result":2})", "\"result\" takes");
}

TEST_F(DriveLines, deepNestingIsReadOver) {
    constexpr std::size_t levels = 500'000;
    std::string objects;
    for (std::size_t i = 0; i < levels; ++i)
        objects += "{\"a\":";
    Drive drive(ctl);
    drive.show();
    expectNoObject(drive, std::string(levels, '[') + std::string(levels, ']'));
    expectNoObject(drive, objects);
    expectRefused(drive, objects + "1" + std::string(levels, '}'), "\"do\" names the command");
    EXPECT_EQ(
        drive.sendLine("{\"do\":\"show\",\"x\":" + std::string(levels, '[') + std::string(levels, ']') + "}").at("ok"),
        true);
}

// A tree of what stands on this line would take more than half a gigabyte.
TEST_F(DriveLines, memoryGoesWithTheLengthOfALine) {
    Drive drive(ctl);
    expectNoObject(drive, std::string(8'000'000, '['));
    EXPECT_LT(drive.peakMemory(), 400U << 20);
}

TEST_F(DriveLines, longLinesAreRead) {
    const std::string text(10'000'000, 'x');
    Drive drive(ctl);
    drive.show();
    expectNoObject(drive, text);
    expectRefused(drive, "{\"do\":\"tap\",\"row\":\"" + text + "\"}", "the page shows no row 'xxx");
    expectRefused(drive, "{\"do\":\"" + text + "\"}", "there is no command 'xxx");
    EXPECT_EQ(drive.sendLine("{\"do\":\"get\",\"key\":\"" + text + "\"}").at("kind"), nullptr);
    EXPECT_EQ(drive.sendLine("{\"do\":\"show\"" + std::string(10'000'000, ' ') + "}").at("ok"), true);
}

TEST_F(DriveLines, wideLinesAreRead) {
    std::string fields;
    for (int i = 0; i < 300'000; ++i)
        fields += "\"f" + std::to_string(i) + "\":{},";
    std::string numbers = "[0";
    for (int i = 0; i < 1'000'000; ++i)
        numbers += ",{}";
    Drive drive(ctl);
    EXPECT_EQ(drive.sendLine("{" + fields + "\"do\":\"show\"}").at("ok"), true);
    EXPECT_EQ(drive.sendLine("{\"x\":" + numbers + "],\"do\":\"show\"}").at("ok"), true);
}

// What a label or key holds comes back as it was, and the answer stays one line of plain JSON.
TEST_F(DriveLines, controlCharactersComeBackEscaped) {
    const std::string label = "a\nb\x1b[31m";
    RunningTrivel3ctl program(ctl, {"drive"});
    program.send(json{{"do", "tap"}, {"row", label}}.dump() + "\n");
    const std::string line = program.readLine().value_or("");
    EXPECT_EQ(line.find('\x1b'), std::string::npos);
    EXPECT_THAT(json::parse(line).at("error").get<std::string>(), HasSubstr(label));
}

}  // namespace
}  // namespace terminal_test
