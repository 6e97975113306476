// SPDX-License-Identifier: MIT
#include "hosts/session/installation.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

TEST(Installation, liesAroundTheProgramsFolder) {
    const auto installation = hosts::installationAround("/usr/local/bin/trivel3ctl");
    EXPECT_EQ(installation.systemImage, "/usr/local/" TEST_MODULES_FOLDER "/system");
    EXPECT_EQ(installation.modules, "/usr/local/" TEST_MODULES_FOLDER);
    EXPECT_EQ(installation.data, "/usr/local/share/trivel3");
    EXPECT_EQ(installation.sessionBusModule(), "/usr/local/" TEST_MODULES_FOLDER "/libtrivel3dbus.so");
    EXPECT_EQ(installation.samplePhone(), "/usr/local/share/trivel3/sample-phone");
}

TEST(Installation, mayBeThatOfTheRoot) {
    EXPECT_EQ(hosts::installationAround("/bin/trivel3ctl").modules, "/" TEST_MODULES_FOLDER);
}

TEST(Installation, takesAnotherSystemImageAlone) {
    const auto installation = hosts::installationAround("/usr/bin/trivel3ctl", "/home/me/image");
    EXPECT_EQ(installation.systemImage, "/home/me/image");
    EXPECT_EQ(installation.modules, "/usr/" TEST_MODULES_FOLDER);
    EXPECT_EQ(hosts::installationAround("/usr/bin/trivel3ctl", "image").systemImage,
              (fs::current_path() / "image").string());
}

TEST(Installation, ofTheRunningProgramIsFound) {
    const fs::path program = fs::read_symlink("/proc/self/exe");
    ::unsetenv("TRIVEL3_SYSTEM_IMAGE");
    auto installation = hosts::findInstallation();
    ASSERT_TRUE(installation) << installation.error().text();
    EXPECT_EQ(installation->modules, (program.parent_path().parent_path() / TEST_MODULES_FOLDER).string());
    EXPECT_EQ(installation->systemImage, installation->modules + "/system");

    ::setenv("TRIVEL3_SYSTEM_IMAGE", "/home/me/image", 1);
    installation = hosts::findInstallation();
    ::unsetenv("TRIVEL3_SYSTEM_IMAGE");
    ASSERT_TRUE(installation) << installation.error().text();
    EXPECT_EQ(installation->systemImage, "/home/me/image");
}

}  // namespace
