// SPDX-License-Identifier: MIT
#include <unistd.h>

#include <QClipboard>
#include <QGuiApplication>
#include <filesystem>
#include <fstream>

#include "hosts/desktop/program/link_opener.h"
#include "tests/desktop/desk.h"
#include "tests/kit/changed_variable.h"

namespace desktop_tests {

namespace fs = std::filesystem;

namespace {

/// While it lives, the superuser, to whom nothing is forbidden, is somebody else.
class OrdinaryUser {
public:
    OrdinaryUser() {
        constexpr uid_t nobody = 65534;
        EXPECT_EQ(::seteuid(_before == 0 ? nobody : _before), 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() { EXPECT_EQ(::seteuid(_before), 0); }

private:
    uid_t _before = ::geteuid();
};

}  // namespace

/// Settings that cannot be saved, or not be read.
class FailedChange : public Desk {
protected:
    const fs::path file = phoneFolder + "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";

    bool isTold(const char* part) {
        return waitFor([this, part] { return bannerText().contains(part); });
    }
    std::string told() { return bannerText().toStdString(); }
    bool isOn(const QString& label) { return row(label)->property("isOn").toBool(); }
    void clickBannerButton(const QString& name) { click(named(view().rootObject(), name)); }

    void putFolderInTheFilesPlace() {
        fs::remove(file);
        fs::create_directories(file / "folder");
    }
};

TEST_F(FailedChange, isToldAndTheRowIsAsBefore) {
    putFolderInTheFilesPlace();
    open();
    ASSERT_TRUE(isOn("Quick Switcher"));
    clickSwitch("Quick Switcher");
    EXPECT_TRUE(isTold("Not saved: cannot write /var/mobile/Library/Preferences/com.fenwary.trivel3.plist")) << told();
    EXPECT_TRUE(isTold("Is a directory")) << told();
    EXPECT_TRUE(waitFor([this] { return isOn("Quick Switcher"); }));
}

TEST_F(FailedChange, isToldWhereTheFolderComesWhileTheWindowIsOpen) {
    writeSettings("<key>HotCorners</key><false/>");
    open();
    ASSERT_FALSE(isOn("Hot Corners"));
    putFolderInTheFilesPlace();
    clickSwitch("Multi-Center");
    EXPECT_TRUE(isTold("Not saved: ")) << told();
    EXPECT_TRUE(waitFor([this] { return isOn("Multi-Center") && isOn("Hot Corners"); })) << "as the file has it";
}

TEST_F(FailedChange, ofAChoiceIsToldToo) {
    open();
    openPage({"Advanced Options", "Album Artwork"});
    putFolderInTheFilesPlace();
    click(row("After 5 seconds"));
    EXPECT_TRUE(isTold("Not saved: ")) << told();
    EXPECT_TRUE(waitFor([this] { return row("After 1 second")->property("marked").toBool(); }));
    EXPECT_FALSE(row("After 5 seconds")->property("marked").toBool());
    fs::remove_all(file);
    clickBannerButton("Try again");
    EXPECT_TRUE(settingIs("AlbumArtworkAutoDismissDelay", "<integer>5</integer>")) << settings();
}

TEST_F(FailedChange, isMadeAgainThroughThePage) {
    putFolderInTheFilesPlace();
    open();
    clickSwitch("Quick Switcher");
    ASSERT_TRUE(isTold("Not saved: ")) << told();
    clickBannerButton("Try again");
    EXPECT_TRUE(isTold("Not saved: ")) << "it fails again";
    fs::remove_all(file);
    clickBannerButton("Try again");
    EXPECT_TRUE(settingIs("QuickSwitcher", "<false/>")) << settings();
    EXPECT_FALSE(isOn("Quick Switcher"));
    EXPECT_EQ(told(), "");
}

TEST_F(FailedChange, isForgottenOnceOneIsSaved) {
    putFolderInTheFilesPlace();
    open();
    clickSwitch("Quick Switcher");
    ASSERT_TRUE(isTold("Not saved: ")) << told();
    fs::remove_all(file);
    clickSwitch("Hot Corners");
    EXPECT_TRUE(settingIs("HotCorners", "<false/>")) << settings();
    EXPECT_EQ(told(), "");
}

TEST_F(FailedChange, isNotMadeAgainOnAPageThatHasGone) {
    open();
    openPage({"Advanced Options", "Album Artwork"});
    putFolderInTheFilesPlace();
    click(row("After 5 seconds"));
    ASSERT_TRUE(isTold("Not saved: ")) << told();
    navigation().back();
    settle();
    clickBannerButton("Try again");
    EXPECT_FALSE(settingIs("AlbumArtworkAutoDismissDelay", "<integer>5</integer>")) << settings();
    EXPECT_EQ(told(), "Not saved: the row is no longer there");
}

TEST_F(FailedChange, onAPhoneThatMayOnlyBeReadIsToldAndMadeAgain) {
    fs::create_directories(file.parent_path());
    open();
    fs::permissions(file.parent_path(), fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                                            fs::perms::others_exec | fs::perms::group_read | fs::perms::group_exec);
    {
        const OrdinaryUser user;
        clickSwitch("Quick Switcher");
        EXPECT_TRUE(isTold("Not saved: ")) << told();
        EXPECT_TRUE(isTold("ermission denied")) << told();
        EXPECT_TRUE(isOn("Quick Switcher"));
    }
    fs::permissions(file.parent_path(), fs::perms::owner_all);
    clickBannerButton("Try again");
    EXPECT_TRUE(settingIs("QuickSwitcher", "<false/>")) << settings();
}

TEST_F(FailedChange, ofAFileThatCannotBeReadShowsDefaultsAndSaysSo) {
    putFolderInTheFilesPlace();
    open();
    session->watchFiles();
    EXPECT_TRUE(
        isTold("These are defaults: cannot read /var/mobile/Library/Preferences/com.fenwary.trivel3.plist: "
               "it is a folder, not a regular file"))
        << told();
    fs::remove_all(file);
    writeSettings("<key>HotCorners</key><false/>");
    EXPECT_TRUE(waitFor([this] { return told().empty(); })) << told();
    EXPECT_FALSE(isOn("Hot Corners"));
}

TEST_F(FailedChange, brokenFileIsToldAndSoIsWhereItIsKept) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << "no settings at all";
    const std::string state = folder / "state";
    const kit::ChangedVariable stateHome("XDG_STATE_HOME", state.c_str());
    open();
    session->watchFiles();
    EXPECT_TRUE(isTold("These are defaults: cannot read ")) << told();
    clickSwitch("Quick Switcher");
    EXPECT_TRUE(settingIs("QuickSwitcher", "<false/>")) << settings();
    EXPECT_TRUE(isTold("was not understood and is written anew; what it held is kept in ")) << told();
    EXPECT_TRUE(isTold(state.c_str())) << told();
    clickBannerButton("Close");
    EXPECT_EQ(told(), "");
}

TEST_F(FailedChange, thereIsNoneToTellOfWhereNoFileIs) {
    open();
    session->watchFiles();
    clickSwitch("Quick Switcher");
    settle();
    EXPECT_EQ(told(), "");
}

/// Links on a desktop that has no program for them.
class LinkWithoutAProgram : public FailedChange {
protected:
    LinkWithoutAProgram() : desktop(phone->installation.desktopModule()), opener(desktop, programs), links(opener) {
        application = &links;
    }
    ~LinkWithoutAProgram() override { session.reset(); }

    const kit::ChangedVariable path{"PATH", (folder / "nowhere").c_str()};
    hosts::Desktop desktop;
    hosts::XdgPrograms programs;
    hosts::UrlOpener opener;
    hosts::desktop::LinkOpener links;
};

TEST_F(LinkWithoutAProgram, isToldWithItsAddress) {
    open();
    links.tell(navigation().banners());
    openPage({"The Creators"});
    click(lines().at(1));
    EXPECT_TRUE(isTold("Not opened: https://twitter.com/Daxon_QT (xdg-open is not installed")) << told();
    clickBannerButton("Copy address");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "https://twitter.com/Daxon_QT");
    EXPECT_EQ(told(), "");
}

}  // namespace desktop_tests
