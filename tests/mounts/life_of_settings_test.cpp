// SPDX-License-Identifier: MIT
// What settings are for, on every kind of mount: programs work on the mounted phone, and what becomes of it is looked
// at from the phone's own side.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "mounted_phone.h"
#include "tests/kit/forked.h"
#include "tests/kit/phone.h"

namespace mounts_test {

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

constexpr const char* exceptionsName = "com.fenwary.trivel3.exceptions.plist";

// A mount is told a moment late that nobody has a file open any more that was replaced; until then it goes by a name of
// its own.
std::vector<std::string> namesInTheEnd(const std::string& folder) {
    const auto deadline = std::chrono::steady_clock::now() + ChildProcess::patience;
    while (namesIn(folder).size() > 1 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds{5});
    return namesIn(folder);
}

class LifeOfSettings : public MountTest, public testing::WithParamInterface<MountKind> {
protected:
    void SetUp() override {
        MountTest::SetUp();
        if (IsSkipped()) return;
        mount = GetParam().mount();
        use(*mount);
    }

    const Phone& behind() const { return mount->behind(); }

    // What the file system promises less may be told, and changes no status.
    void set(const std::string& key, const std::string& value) {
        const Outcome outcome = ctl.run({"set", key, value});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }

    std::string get(const std::string& key) {
        const Outcome outcome = ctl.run({"get", key});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return outcome.output;
    }

    std::unique_ptr<Mount> mount;
};

std::string nameOf(const testing::TestParamInfo<MountKind>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(On, LifeOfSettings, testing::ValuesIn(mountKinds()), nameOf);

TEST_P(LifeOfSettings, whatThePhonesSideHasWrittenIsRead) {
    EXPECT_EQ(get("HotCorners"), "true\n");
    writeSettings(behind(),
                  settingsOf({{"AlbumArtworkAutoDisplay", "<integer>3</integer>"}, {"HotCorners", "<false/>"}}));
    EXPECT_EQ(get("HotCorners"), "false\n");
    EXPECT_EQ(get("AlbumArtworkAutoDisplay"), "3\n");
    for (const json& setting : ctl.runForJson({"list", "--json"})) {
        const std::string key = setting.at("key");
        EXPECT_EQ(setting.at("stored"), key == "AlbumArtworkAutoDisplay" || key == "HotCorners") << key;
    }
}

TEST_P(LifeOfSettings, aChangeIsOnThePhoneAtOnceAndAlone) {
    writeSettings(behind(), manySettings());
    set("HotCorners", "off");
    EXPECT_EQ(readSettings(behind()), manySettingsBut({{"HotCorners", "<false/>"}}));
    set("SliderActionsVolume", "1");
    EXPECT_EQ(readSettings(behind()),
              manySettingsBut({{"HotCorners", "<false/>"}, {"SliderActionsVolume", "<integer>1</integer>"}}));
    EXPECT_EQ(get("SliderActionsVolume"), "1\n");
    EXPECT_THAT(namesInTheEnd(behind().preferencesFolder()), ElementsAre(settingsName));
}

TEST_P(LifeOfSettings, theFirstChangeMakesTheFoldersAndTheFile) {
    set("HotCorners", "off");
    EXPECT_EQ(readSettings(behind()), settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_THAT(namesInTheEnd(behind().preferencesFolder()), ElementsAre(settingsName));
    EXPECT_EQ(fs::status(behind().settingsFile()).permissions(), fs::perms{0644});
}

TEST_P(LifeOfSettings, permissionsOfTheFileAreKept) {
    for (const auto mode : {fs::perms{0600}, fs::perms{0664}}) {
        writeSettings(behind(), manySettings());
        fs::permissions(behind().settingsFile(), mode);
        set("HotCorners", "off");
        EXPECT_EQ(fs::status(behind().settingsFile()).permissions(), mode);
        fs::remove(behind().settingsFile());
    }
}

TEST_P(LifeOfSettings, applicationsAreTicked) {
    addApplication(behind(), "Tides");
    std::string lines;
    for (const char* row : {"Advanced Options", "Disable in Applications", "Tides"})
        lines += json{{"do", "tap"}, {"row", row}}.dump() + "\n";
    const Outcome outcome = ctl.run({"drive"}, lines);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(readText(behind().preferencesFolder() + "/" + exceptionsName),
              settingsOf({{"example.named", "<true/>"}}));
}

TEST_P(LifeOfSettings, filesOfAnyLengthAreReadAndWritten) {
    auto files = openPhone(mount->folder());
    for (const std::size_t size : {0U, 1U, 4096U, 3'000'000U}) {
        const std::string content(size, 'x');
        EXPECT_EQ(kit::replaceFile(files, "/folder/file", content), "");
        std::string found;
        EXPECT_TRUE(files.readFile("/folder/file", found));
        EXPECT_TRUE(found == content);
        EXPECT_TRUE(readText(behind() / "folder/file") == content);
    }
    EXPECT_THAT(namesInTheEnd(behind() / "folder"), ElementsAre("file"));
}

// One content is longer than the other, so that a mixture would show.
TEST_P(LifeOfSettings, readersOnThePhonesSideFindAWholeFileAtAnyTime) {
    if (!GetParam().replacesByRenaming) GTEST_SKIP() << "no file takes another's place here in one step";
    const std::vector<std::string> contents{manySettings(), manySettingsBut({{"More", "<true/>"}})};
    writeSettings(behind(), contents[0]);
    SharedCounter readings;
    SharedCounter broken;
    SharedCounter over;
    const pid_t reader = startForked([&] {
        while (*over == 0) {
            const std::string found = readSettings(behind());
            if (found != contents[0] && found != contents[1]) ++*broken;
            ++*readings;
        }
        return 0;
    });
    auto files = openPhone(mount->folder());
    for (std::size_t i = 0; i < 40 || *readings == 0; ++i)
        EXPECT_EQ(kit::replaceFile(files, settingsPath, contents[i % 2]), "");
    *over = 1;
    EXPECT_EQ(waitForChild(reader), 0);
    EXPECT_EQ(*broken, 0);
}

// Each moves a switch of its own again and again, without waiting for the answers.
TEST_P(LifeOfSettings, twoProgramsAtATimeLoseNothing) {
    constexpr int moves = 24;
    const auto movesOf = [](const std::string& row) {
        std::string lines;
        for (int i = 0; i < moves; ++i)
            lines += json{{"do", "switch"}, {"row", row}, {"on", i % 2 == 1}}.dump() + "\n";
        return lines + json{{"do", "switch"}, {"row", row}, {"on", false}}.dump() + "\n";
    };
    writeSettings(behind(), manySettings());
    RunningTrivel3ctl one(ctl, {"drive"});
    RunningTrivel3ctl other(ctl, {"drive"});
    one.send(movesOf("Hot Corners"));
    other.send(movesOf("Quick Switcher"));
    for (RunningTrivel3ctl* program : {&one, &other}) {
        const Outcome outcome = program->finish();
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        for (const std::string& line : linesOf(outcome.output))
            EXPECT_EQ(json::parse(line).at("ok"), true) << line;
    }
    EXPECT_EQ(readSettings(behind()), manySettingsBut({{"HotCorners", "<false/>"}, {"QuickSwitcher", "<false/>"}}));
    auto names = namesIn(behind().preferencesFolder());
    // What a mount calls a file that is replaced while the other program reads it, until it is closed.
    std::erase_if(names, [](const std::string& name) { return name.starts_with(".fuse_hidden"); });
    EXPECT_THAT(names, ElementsAre(settingsName));
}

}  // namespace
}  // namespace mounts_test
