// SPDX-License-Identifier: MIT
// Settings files that are none. Every page then shows the defaults, and the first change replaces
// what is there by a file that holds just that change.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "pane.h"
#include "platform/foundation/property_list.h"

namespace pages_test {
namespace {

using testing::ElementsAre;

std::string truncatedBinary() {
    const std::string whole =
        platform::writeBinaryPropertyList(platform::Dictionary{{"MultiCenter", false}}).bytes.value();
    return whole.substr(0, whole.size() / 2);
}

struct Damage {
    const char* name;
    std::function<void(Pane&)> inflict;
    bool canBeReplaced = true;
};

void PrintTo(const Damage& damage, std::ostream* stream) {
    *stream << damage.name;
}

std::function<void(Pane&)> bytes(std::string content) {
    return [content](Pane& pane) { pane.phone.put(settingsFile, std::string_view(content)); };
}

std::filesystem::path machineFile(const Pane& pane) {
    return pane.phone.machinePath(settingsFile);
}

const Damage damages[] = {
    {"missing", [](Pane&) {}},
    {"noFolder", [](Pane& pane) { pane.phone.remove("/var/mobile"); }},
    {"empty", bytes("")},
    {"garbage", bytes("\x00\xff garbage")},
    {"unclosed", bytes("<plist version=\"1.0\"><dict><key>MultiCenter</key><false/>")},
    {"arrayRoot", bytes("<plist version=\"1.0\"><array><false/></array></plist>")},
    {"textRoot", bytes("<plist version=\"1.0\"><string>MultiCenter</string></plist>")},
    {"truncatedBinary", bytes(truncatedBinary())},
    {"fifo", [](Pane& pane) { ASSERT_EQ(::mkfifo(machineFile(pane).c_str(), 0644), 0); }},
    {"danglingLink", [](Pane& pane) { std::filesystem::create_symlink("nowhere", machineFile(pane)); }},
    {"linkToItself",
     [](Pane& pane) { std::filesystem::create_symlink(machineFile(pane).filename(), machineFile(pane)); }},
    {"folder", [](Pane& pane) { std::filesystem::create_directory(machineFile(pane)); }, false},
};

class DamagedFile : public testing::TestWithParam<Damage> {
protected:
    DamagedFile() { GetParam().inflict(pane); }

    /// What the file holds after one change.
    void expectAlone(std::string_view key, const platform::Value& value) const {
        if (GetParam().canBeReplaced) {
            EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{std::string(key), value}}));
        } else {
            EXPECT_EQ(pane.file(), std::nullopt);
        }
    }

    Pane pane;
};

TEST_P(DamagedFile, showsTheRootPagesDefaults) {
    pane.openQuietly(rootPage);
    EXPECT_THAT(pane.screen.onLabels(), ElementsAre("Multi-Center", "Quick Switcher", "Hot Corners"));
}

TEST_P(DamagedFile, showsTheFeaturePagesDefaults) {
    pane.openQuietly(quickLauncherPage);
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Do Not Display", "Do Not Display"));
    pane.openQuietly(sliderActionsPage);
    EXPECT_THAT(pane.screen.checkedLabels(),
                ElementsAre("Toggle Auto-Brightness", "Switch to Ringer Volume", "Disable Slider HUD"));
    EXPECT_THAT(pane.screen.onLabels(), testing::IsEmpty());
    pane.openQuietly(albumArtworkPage);
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("On Next", "On Previous", "After 1 second"));
}

TEST_P(DamagedFile, showsTheOptionsDefaults) {
    pane.openQuietly(optionsPage);
    EXPECT_THAT(pane.screen.onLabels(), ElementsAre("Reachable Display", "Minimal Display"));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("If no Media is Playing"));
}

TEST_P(DamagedFile, isReplacedByASwitchChange) {
    pane.openQuietly(rootPage);
    EXPECT_TRUE(pane.screen.moveSwitch("Hot Corners", false));
    EXPECT_THAT(pane.log.take(),
                ElementsAre(GetParam().canBeReplaced ? settingsWritten() : settingsNotWritten(), settingsChanged()));
    expectAlone("HotCorners", false);
}

TEST_P(DamagedFile, isReplacedByAChoice) {
    pane.openQuietly(albumArtworkPage);
    pane.screen.tap("On Play");
    expectAlone("AlbumArtworkAutoDisplay", 7);
}

INSTANTIATE_TEST_SUITE_P(Each, DamagedFile, testing::ValuesIn(damages),
                         [](const auto& damage) { return std::string(damage.param.name); });

TEST(BinaryFile, isReadAndBecomesXmlWithTheFirstChange) {
    Pane pane;
    pane.phone.put(settingsFile,
                   std::string_view(platform::writeBinaryPropertyList(
                                        platform::Dictionary{{"MultiCenter", false}, {"HotCorners", false}})
                                        .bytes.value()));
    pane.openQuietly(rootPage);
    EXPECT_THAT(pane.screen.onLabels(), ElementsAre("Quick Switcher"));
    EXPECT_TRUE(pane.screen.moveSwitch("Hot Corners", true));
    EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{"MultiCenter", false}, {"HotCorners", true}}));
    EXPECT_THAT(*pane.phone.bytes(settingsFile), testing::StartsWith("<?xml"));
}

}  // namespace
}  // namespace pages_test
