// SPDX-License-Identifier: MIT
#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr int moves = 60;

// Moves one switch again and again, without waiting for the answers.
std::string movesOf(const std::string& row) {
    std::string lines;
    for (int i = 0; i < moves; ++i)
        lines += json{{"do", "switch"}, {"row", row}, {"on", i % 2 == 1}}.dump() + "\n";
    return lines;
}

void expectAnswers(RunningTrivel3ctl& program) {
    for (int i = 0; i < moves; ++i) {
        const auto line = program.readLine();
        ASSERT_TRUE(line.has_value());
        const json answer = json::parse(*line);
        EXPECT_EQ(answer.at("ok"), true);
        ASSERT_THAT(eventsOf(answer, "write"), SizeIs(1));
        EXPECT_EQ(eventsOf(answer, "write").at(0).at("ok"), true);
    }
}

// A key that one of them writes may be lost to the other; a file that is not whole never appears.
TEST(TwoWriters, everyReaderFindsAWholeFile) {
    Trivel3ctl ctl;
    const Phone phone;
    ctl.usePhone(phone.folder);
    writeSettings(phone, settingsOf({{"Mine", "<string>kept</string>"}}));
    RunningTrivel3ctl one(ctl, {"drive"});
    RunningTrivel3ctl other(ctl, {"drive"});
    one.send(movesOf("Hot Corners"));
    other.send(movesOf("Quick Switcher"));

    // A file that is not whole would read as one without the key.
    Drive reader(ctl);
    const json kept = {{"ok", true}, {"kind", "string"}, {"value", "kept"}};
    for (int i = 0; i < 300; ++i)
        ASSERT_EQ(reader.send({{"do", "get"}, {"key", "Mine"}}), kept);
    expectAnswers(one);
    expectAnswers(other);
    expectDone(one.finish());
    expectDone(other.finish());

    EXPECT_EQ(reader.send({{"do", "get"}, {"key", "Mine"}}), kept);
    EXPECT_THAT(namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

TEST(TwoWriters, oneSeesWhatTheOtherHasWritten) {
    Trivel3ctl ctl;
    const Phone phone;
    ctl.usePhone(phone.folder);
    Drive one(ctl);
    Drive other(ctl);
    one.moveSwitch("Hot Corners", false);
    EXPECT_EQ(rowLabelled(other.show(), "Hot Corners").at("on"), false);
    other.moveSwitch("Quick Switcher", false);
    EXPECT_EQ(rowLabelled(one.show(), "Quick Switcher").at("on"), false);
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}, {"QuickSwitcher", "<false/>"}}));
}

}  // namespace
}  // namespace terminal_test
