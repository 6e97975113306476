// SPDX-License-Identifier: MIT
#include <QSignalSpy>
#include <QTest>
#include <fstream>

#include "tests/desktop/desk.h"

namespace desktop_tests {

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

TEST_F(FileChange, leavesThePagesOwnRulesAlone) {
    open();
    openPage({"Advanced Options"});
    session->watchFiles();
    ASSERT_TRUE(shows("Always"));
    // The page would take the conditions away, were it asked.
    writeSettings("<key>MinimalControlCenterEnabled</key><false/>");
    ASSERT_TRUE(waitFor([this] { return !isOn("Minimal Display"); }));
    EXPECT_TRUE(shows("Always"));
}

TEST_F(FileChange, ofOurOwnIsNotTakenForAnothers) {
    open();
    hosts::desktop::SettingsWatch watch(*files, phoneFolder,
                                        {"/var/mobile/Library/Preferences/com.fenwary.trivel3.plist"});
    QSignalSpy changed(&watch, &hosts::desktop::SettingsWatch::changed);
    clickSwitch("Quick Switcher");
    QTest::qWait(200);
    EXPECT_EQ(changed.count(), 0);
    writeSettings("<key>QuickSwitcher</key><true/>");
    EXPECT_TRUE(changed.wait());
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
