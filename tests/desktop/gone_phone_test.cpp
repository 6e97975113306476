// SPDX-License-Identifier: MIT
#include <filesystem>
#include <optional>
#include <string>

#include "tests/desktop/desk.h"
#include "tests/desktop/real_program.h"
#include "tests/kit/private_mounts.h"

namespace desktop_tests {

namespace fs = std::filesystem;

class GonePhone : public Desk {
protected:
    bool isTold(const char* part) {
        return waitFor([this, part] { return navigation().banners().text().contains(part); });
    }
    std::string message() { return navigation().banners().text().toStdString(); }
};

TEST_F(GonePhone, isToldInAWindowThatStands) {
    open();
    session->watchFiles();
    fs::remove_all(phoneFolder);
    EXPECT_TRUE(isTold("The phone is gone: ")) << message();
    EXPECT_NE(message().find(phoneFolder + " has been deleted"), std::string::npos) << message();
    navigation().banners().close();
    settle();
    EXPECT_TRUE(shows("Quick Switcher"));
}

TEST_F(GonePhone, takesNoChange) {
    open();
    fs::remove_all(phoneFolder);
    ASSERT_TRUE(row("Quick Switcher")->property("isOn").toBool());
    clickSwitch("Quick Switcher");
    EXPECT_TRUE(isTold("Not saved: cannot write ")) << message();
    EXPECT_TRUE(isTold("the phone is gone: its folder has been deleted")) << message();
    navigation().banners().close();
    settle();
    EXPECT_TRUE(row("Quick Switcher")->property("isOn").toBool());
    EXPECT_EQ(message(), "") << "the same is not told again for the row that is drawn anew";
    EXPECT_FALSE(fs::exists(phoneFolder));
}

TEST_F(GonePhone, isNotShownAsAnEmptyOne) {
    open();
    fs::remove_all(phoneFolder);
    navigation().redrawVisibleRows();
    view().update();
    EXPECT_TRUE(isTold("These are defaults: cannot read ")) << message();
}

TEST_F(GonePhone, wasNoneInAnEmptyFolder) {
    const std::string empty = folder / "empty";
    fs::create_directory(empty);
    hosts::PhoneOptions options;
    options.phone = empty;
    auto opened = hosts::OpenedPhone::open(options, "desktop_test");
    ASSERT_TRUE(opened);
    opened->installation.systemImage = TRIVEL3_SYSTEM_IMAGE;
    phone.emplace(*std::move(opened));
    open();
    EXPECT_TRUE(isTold("it held no phone")) << message();
    navigation().banners().close();
    clickSwitch("Quick Switcher");
    EXPECT_TRUE(waitFor([&] { return fs::exists(empty + "/var/mobile/Library/Preferences"); })) << "used all the same";
}

class UnmountedPhone : public RealProgram {
protected:
    // Runs the program without a window, with or without the phone mounted.
    kit::Outcome runProgram(bool isMounted, const QStringList& more = {}) {
        std::vector<std::string> words;
        if (isMounted) {
            words = {"/usr/bin/unshare",
                     "-rm",
                     "/bin/sh",
                     "-ec",
                     "mount -t tmpfs none '" + phone.toStdString() + "'\n\"$@\"",
                     "sh"};
        }
        const auto program = command(QStringList{"--phone", phone, "--screenshots", pathOf("pictures")} + more);
        words.insert(words.end(), program.begin(), program.end());
        return kit::ChildProcess(words, environment).finish();
    }
};

TEST_F(UnmountedPhone, isNotShownUnlessTheFolderIsToBeUsedAsItIs) {
    if (!kit::mayMount()) GTEST_SKIP() << kit::noMounts;
    EXPECT_EQ(runProgram(true).status, 0);
    const kit::Outcome refused = runProgram(false);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors, "trivel3-settings: cannot open the phone " + phone.toStdString() +
                                  ": the folder was a mount when it was last opened, and is none now; mount the phone "
                                  "again, or give --create to use the folder as it is\n");
    EXPECT_EQ(runProgram(false, {"--create"}).status, 0);
    EXPECT_EQ(runProgram(false).status, 0);
}

}  // namespace desktop_tests
