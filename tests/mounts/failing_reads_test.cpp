// SPDX-License-Identifier: MIT
// A phone whose files are there and cannot be read just now.
#include <filesystem>

#include "mounted_phone.h"
#include "tests/kit/expectations.h"

namespace mounts_test {

namespace {

const std::vector<std::vector<std::string>> readingCommands{
    {"get", "HotCorners"}, {"list"}, {"list", "--json"}, {"show", "Advanced Options"}};

struct FailingReads : MountTest {
    void SetUp() override {
        MountTest::SetUp();
        if (IsSkipped()) return;
        mount = std::make_unique<LesserMount>(std::vector<std::string>{});
        use(*mount);
        writeSettings(mount->behind(), manySettings());
    }

    std::string settings() const { return readSettings(mount->behind()); }

    std::unique_ptr<LesserMount> mount;
};

TEST_F(FailingReads, failAChangeAndLeaveTheFile) {
    mount->setReadingFails(true);
    expectFailure(ctl.run({"set", "HotCorners", "off"}), 1, settingsPath);
    EXPECT_EQ(settings(), manySettings());
    EXPECT_EQ(namesIn(mount->behind().preferencesFolder()), std::vector<std::string>{settingsName});
}

TEST_F(FailingReads, failWhoAsksForSettings) {
    mount->setReadingFails(true);
    for (const auto& command : readingCommands) {
        SCOPED_TRACE(command.front());
        expectFailure(ctl.run(command), 1, settingsPath);
    }
    EXPECT_EQ(settings(), manySettings());
}

// The page has taken defaults for what it could not read, and derives repairs from them.
TEST_F(FailingReads, leaveTheFileWhenAPageIsOpened) {
    mount->setReadingFails(true);
    ctl.run({"drive"}, json{{"do", "tap"}, {"row", "Advanced Options"}}.dump() + "\n");
    EXPECT_EQ(settings(), manySettings());
}

TEST_F(FailingReads, areOverWhenTheyAreOver) {
    mount->setReadingFails(true);
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 1);
    mount->setReadingFails(false);
    for (const auto& command : readingCommands)
        EXPECT_EQ(ctl.run(command).status, 0) << command.front();
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 0);
    EXPECT_EQ(settings(), manySettingsBut({{"HotCorners", "<false/>"}}));
}

// One that is at work all the while: a change is not made later on what was read before.
TEST_F(FailingReads, loseNothingToAProgramThatStaysOpen) {
    RunningTrivel3ctl program(ctl, {"drive"});
    const auto move = [&](bool on) {
        program.send(json{{"do", "switch"}, {"row", "Hot Corners"}, {"on", on}}.dump() + "\n");
        program.readLine();
    };
    move(false);
    EXPECT_EQ(settings(), manySettingsBut({{"HotCorners", "<false/>"}}));
    mount->setReadingFails(true);
    move(true);
    EXPECT_EQ(settings(), manySettingsBut({{"HotCorners", "<false/>"}}));
    mount->setReadingFails(false);
    writeSettings(mount->behind(), manySettingsBut({{"HotCorners", "<false/>"}, {"Newer", "<true/>"}}));
    move(true);
    EXPECT_EQ(settings(), manySettingsBut({{"Newer", "<true/>"}}));
    program.finish();
}

}  // namespace
}  // namespace mounts_test
