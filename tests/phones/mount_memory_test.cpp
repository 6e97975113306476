// SPDX-License-Identifier: MIT
#include "hosts/phones/mount_memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "hosts/phones/folder_phone.h"
#include "tests/kit/phone.h"
#include "tests/kit/private_mounts.h"

namespace {

namespace fs = std::filesystem;
using kit::Phone;
using testing::HasSubstr;
using testing::IsEmpty;

class MountMemory : public testing::Test {
protected:
    // Opens the phone and gives the problem, in a process that has it mounted or has not.
    std::string open(bool isMounted) {
        const int status = kit::runForked([&] {
            if (isMounted && !(kit::enterPrivateMounts() && kit::mountMemory(phone.folder))) return 2;
            const auto opened = hosts::FolderPhone::open(phone.folder, "/no/such/module.so", memory);
            kit::writeText(phone.around / "problem", opened ? "" : opened.error().text());
            return 0;
        });
        EXPECT_EQ(status, 0);
        return kit::readText(phone.around / "problem");
    }

    Phone phone;
    std::string folder = phone.around / "state/trivel3/mounts";
    hosts::MountMemory memory{folder};
};

TEST_F(MountMemory, takesAFolderThatWasNeverAMount) {
    EXPECT_EQ(open(false), "");
    EXPECT_FALSE(fs::exists(phone.around / "state"));
}

TEST_F(MountMemory, refusesAFolderThatWasAMountAndIsNoneNow) {
    if (!kit::mayMount()) GTEST_SKIP() << kit::noMounts;
    EXPECT_EQ(open(true), "");
    EXPECT_THAT(open(false),
                testing::AllOf(HasSubstr(phone.folder), HasSubstr("mount the phone again"), HasSubstr("--create")));
    EXPECT_EQ(open(true), "");
    EXPECT_NE(open(false), "") << "it is remembered for good";
}

TEST_F(MountMemory, forgetsAFolder) {
    if (!kit::mayMount()) GTEST_SKIP() << kit::noMounts;
    EXPECT_EQ(open(true), "");
    memory.forget(phone.folder);
    EXPECT_EQ(open(false), "");
    EXPECT_THAT(kit::namesIn(folder), IsEmpty());
}

TEST_F(MountMemory, keepsALinkToTheFolderForItsUserAlone) {
    if (!kit::mayMount()) GTEST_SKIP() << kit::noMounts;
    EXPECT_EQ(open(true), "");
    ASSERT_EQ(kit::namesIn(folder).size(), 1u);
    EXPECT_EQ(fs::read_symlink(fs::path(folder) / kit::namesIn(folder).front()), phone.folder);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
}

TEST_F(MountMemory, thatCannotBeWrittenIsNoObstacle) {
    if (!kit::mayMount()) GTEST_SKIP() << kit::noMounts;
    kit::writeText(phone.around / "state", "a file");
    EXPECT_EQ(open(true), "");
    EXPECT_EQ(open(false), "");
}

}  // namespace
