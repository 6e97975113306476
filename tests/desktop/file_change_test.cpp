// SPDX-License-Identifier: MIT
#include <sys/stat.h>

#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "tests/desktop/desk.h"
#include "tests/kit/temporary_folder.h"

namespace desktop_tests {

namespace fs = std::filesystem;

namespace {

ino_t inodeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_ino;
}

// What this process has the kernel watch.
std::set<ino_t> watchedInodes() {
    std::set<ino_t> inodes;
    for (const auto& entry : fs::directory_iterator("/proc/self/fdinfo")) {
        std::ifstream information(entry.path());
        for (std::string line; std::getline(information, line);) {
            const std::size_t place = line.find(" ino:");
            if (line.starts_with("inotify ") && place != line.npos) {
                inodes.insert(std::stoull(line.substr(place + 5), nullptr, 16));
            }
        }
    }
    return inodes;
}

}  // namespace

class FileChange : public Desk {
protected:
    bool isOn(const QString& label) { return row(label)->property("isOn").toBool(); }
    std::string hostPath() const { return phoneFolder + "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist"; }
};

TEST_F(FileChange, byAnotherProcessIsSeenOnTheRows) {
    open();
    session->watchFiles();
    ASSERT_TRUE(isOn("Quick Switcher"));
    writeSettings("<key>QuickSwitcher</key><false/>");
    EXPECT_TRUE(waitFor([this] { return !isOn("Quick Switcher"); }));
    writeSettings("<key>QuickSwitcher</key><true/>");
    EXPECT_TRUE(waitFor([this] { return isOn("Quick Switcher"); }));
}

TEST_F(FileChange, writtenInPlaceIsSeenToo) {
    writeSettings("<key>QuickSwitcher</key><true/>");
    open();
    session->watchFiles();
    std::ofstream(hostPath()) << "<plist version=\"1.0\"><dict><key>QuickSwitcher</key><false/></dict></plist>";
    EXPECT_TRUE(waitFor([this] { return !isOn("Quick Switcher"); }));
}

TEST_F(FileChange, firstFileInAFolderThatWasMissingIsSeen) {
    std::filesystem::remove_all(phoneFolder + "/var/mobile");
    open();
    session->watchFiles();
    std::filesystem::create_directories(phoneFolder + "/var/mobile/Library/Preferences");
    QTest::qWait(100);
    writeSettings("<key>HotCorners</key><false/>");
    EXPECT_TRUE(waitFor([this] { return !isOn("Hot Corners"); }));
}

// On many a phone "/var" is a link. An absolute one starts at the phone's root, not at this machine's.
TEST_F(FileChange, behindALinkOnThePhoneIsSeen) {
    fs::rename(phoneFolder + "/var", phoneFolder + "/private");
    fs::create_directory_symlink("/private", phoneFolder + "/var");
    open();
    session->watchFiles();
    const std::string file = phoneFolder + "/private/mobile/Library/Preferences/com.fenwary.trivel3.plist";
    fs::create_directories(fs::path(file).parent_path());
    std::ofstream(file) << "<plist version=\"1.0\"><dict><key>QuickSwitcher</key><false/></dict></plist>";
    EXPECT_TRUE(waitFor([this] { return !isOn("Quick Switcher"); }));
}

TEST_F(FileChange, isWatchedForOnThePhoneAlone) {
    const kit::TemporaryFolder outside;
    const fs::path file = outside.path() / "com.fenwary.trivel3.plist";
    std::ofstream(file) << "<plist version=\"1.0\"><dict/></plist>";
    const fs::path preferences = phoneFolder + "/var/mobile/Library/Preferences";
    fs::remove_all(preferences);
    fs::create_directory_symlink(outside.path(), preferences);
    open();
    session->watchFiles();
    const auto watched = watchedInodes();
    EXPECT_TRUE(watched.contains(inodeOf(preferences.parent_path())));
    EXPECT_FALSE(watched.contains(inodeOf(outside.path())));
    EXPECT_FALSE(watched.contains(inodeOf(file)));
}

// The page in view has a repair for what the file holds then.
TEST_F(FileChange, runsThePagesOwnRulesAndWritesNothing) {
    open();
    openPage({"Advanced Options"});
    session->watchFiles();
    ASSERT_TRUE(waitFor([this] { return shows("Always"); }));
    writeSettings(
        "<key>MinimalControlCenterEnabled</key><false/><key>MultiCenter</key><false/>"
        "<key>PeopleInToday</key><true/>");
    const std::string written = kit::readText(hostPath());
    EXPECT_TRUE(waitFor([this] { return !isOn("Minimal Display") && !shows("Always"); }));
    EXPECT_EQ(kit::readText(hostPath()), written);
}

TEST_F(FileChange, ofOurOwnIsUndoneAndDoneAgainByKeys) {
    open();
    session->watchFiles();
    clickSwitch("Quick Switcher");
    ASSERT_TRUE(waitFor([this] { return settingIs("QuickSwitcher", "<false/>"); }));
    settle();
    clickSwitch("Hot Corners");
    ASSERT_TRUE(waitFor([this] { return settingIs("HotCorners", "<false/>"); }));
    settle();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([this] { return isOn("Hot Corners"); }));
    EXPECT_EQ(bannerText(), "Undone: HotCorners");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([this] { return isOn("Quick Switcher"); }));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(bannerText(), "Not undone: there is nothing to undo");
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(waitFor([this] { return !isOn("Quick Switcher"); }));
    EXPECT_TRUE(isOn("Hot Corners"));
    EXPECT_EQ(bannerText(), "Done again: QuickSwitcher");
}

TEST_F(FileChange, ofOurOwnIsNotTakenForAnothers) {
    open();
    session->watchFiles();
    // A row that is produced again for another's change is not seen changing.
    const auto isSeenChanging = [this] {
        auto& model = table();
        return model.data(model.index(lineOf("Quick Switcher")), hosts::desktop::TableModel::AnimatedRole).toBool();
    };
    clickSwitch("Quick Switcher");
    ASSERT_TRUE(settingIs("QuickSwitcher", "<false/>"));
    QTest::qWait(200);
    EXPECT_TRUE(isSeenChanging());
    writeSettings("<key>QuickSwitcher</key><true/>");
    EXPECT_TRUE(waitFor([&] { return !isSeenChanging(); }));
}

// Another process that keeps breaking what the page repairs: each of its writes is answered at most
// once, and then there is rest.
TEST_F(FileChange, thatThePageRepairsEndsInRest) {
    open();
    openPage({"Advanced Options", "Close All Apps"});
    session->watchFiles();
    writeSettings("<key>CloseAllAppsExceptions</key><string>broken</string>");
    ASSERT_TRUE(waitFor([this] { return settings().find("broken") == std::string::npos; }));
    QTest::qWait(300);
    const auto written = std::filesystem::last_write_time(hostPath());
    QTest::qWait(300);
    EXPECT_EQ(std::filesystem::last_write_time(hostPath()), written);
}

}  // namespace desktop_tests
