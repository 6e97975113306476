// SPDX-License-Identifier: MIT
#include "hosts/phones/disk_usage.h"

#include <gtest/gtest.h>
#include <sys/statvfs.h>

#include <filesystem>

#include "tests/kit/ssh_host.h"

namespace far_phones_test {
namespace {

using namespace kit;

constexpr const char* head = "Filesystem     1024-blocks      Used Available Capacity Mounted on\n";

TEST(DiskFree, isReadInKilobytes) {
    const auto blocks = hosts::readDiskFree(std::string(head) + "/dev/disk0s1s1   2000000   500000  1400000  27% /\n");
    ASSERT_TRUE(blocks);
    EXPECT_EQ(blocks->size, 1024U);
    EXPECT_EQ(blocks->all, 2000000U);
    EXPECT_EQ(blocks->unused, 1500000U);
    EXPECT_EQ(blocks->available, 1400000U);
}

TEST(DiskFree, namesMayHoldBlanks) {
    const auto blocks = hosts::readDiskFree(std::string(head) + "a 7 b 20 5 15 25% /private var/mobile");
    ASSERT_TRUE(blocks);
    EXPECT_EQ(blocks->all, 20U);
}

TEST(DiskFree, anythingElseIsNone) {
    for (const std::string line :
         {"", "/dev/disk0s1s1 2000 500 1400 27% relative", "/dev/disk0s1s1 2000 500 1400 27 /",
          "/dev/disk0s1s1 2000 -500 1400 27% /", "/dev/disk0s1s1 2000 2500 1400 27% /",
          "/dev/disk0s1s1 2000 500 2400 27% /", "/dev/disk0s1s1 99999999999999999 500 1400 27% /",
          "2000 500 1400 27% /", "/dev/disk0s1s1 2000 500 1400 27% /\nand more"})
        EXPECT_FALSE(hosts::readDiskFree(head + line)) << line;
    EXPECT_FALSE(hosts::readDiskFree("/dev/disk0s1s1 2000 500 1400 27% /"));
    EXPECT_FALSE(hosts::readDiskFree("df: not found\n/dev/disk0s1s1 2000 500 1400 27% /"));
}

platform::Value capacityToldBy(const SshHost& host) {
    std::filesystem::create_directories(host.phone() / "a folder that's a phone");
    const auto phone = host.openPhone(host.address() + "/a%20folder%20that's%20a%20phone");
    const auto usage = phone->device().copyAnswer("DiskUsage");
    const auto* capacity = usage && usage->dictionary() ? usage->dictionary()->find("TotalDiskCapacity") : nullptr;
    return capacity ? *capacity : platform::Value();
}

platform::Value capacityHere(const SshHost& host) {
    struct statvfs status {};
    if (::statvfs(host.phone().folder.c_str(), &status) != 0) throw std::runtime_error("statvfs");
    return std::uint64_t{status.f_blocks} * status.f_frsize;
}

TEST(DiskUsageOfAFarPhone, isToldByItsServer) {
    const SshHost host;
    EXPECT_EQ(capacityToldBy(host), capacityHere(host));
}

TEST(DiskUsageOfAFarPhone, isToldByItsOwnCommandWhereTheServerDoesNotTell) {
    const SshHost host({.server = {"Subsystem sftp " TEST_SFTP_SERVER_PATH " -P statvfs"}, .hasSubsystem = false});
    EXPECT_EQ(capacityToldBy(host), capacityHere(host));
}

}  // namespace
}  // namespace far_phones_test
