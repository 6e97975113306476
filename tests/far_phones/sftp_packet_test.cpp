// SPDX-License-Identifier: MIT
#include "hosts/phones/far/sftp_packet.h"

#include <gtest/gtest.h>

#include <random>

namespace far_phones_test {
namespace {

using namespace hosts::sftp;
using namespace std::string_literals;

const std::string greeting = "\0\0\0\x12\2\0\0\0\3\0\0\0\4name\0\0\0\1v"s;

TEST(PacketStream, findsTheGreetingAfterWhateverAShellSays) {
    for (const std::string& before : {""s, "Welcome!\r\n"s, "\0\0\0\x12\x02 no"s, std::string(60'000, '\0')}) {
        PacketStream stream;
        // Byte by byte at the end, as it may come.
        stream.append(before + greeting.substr(0, greeting.size() - 3));
        auto early = stream.takeGreeting();
        ASSERT_TRUE(early);
        EXPECT_FALSE(*early);
        stream.append(greeting.substr(greeting.size() - 3));
        const auto found = stream.takeGreeting();
        ASSERT_TRUE(found && *found) << before.size();
        EXPECT_EQ((*found)->version, 3U);
        ASSERT_EQ((*found)->extensions.size(), 1U);
        EXPECT_EQ((*found)->extensions[0], (std::pair{"name"s, "v"s}));
        EXPECT_EQ(stream.foreword(), before);
    }
}

TEST(PacketStream, givesUpOnWhatSaysSomethingElseWithoutEnd) {
    PacketStream stream;
    bool isRefused = false;
    for (int parts = 0; parts < 100 && !isRefused; ++parts) {
        stream.append(std::string(4096, 'x'));
        isRefused = !stream.takeGreeting();
    }
    EXPECT_TRUE(isRefused);
}

TEST(PacketStream, refusesPacketsThatAreLongerThanAnyAnswer) {
    for (const std::string& length : {"\xFF\xFF\xFF\xFF"s, "\0\x10\0\0"s, "\0\0\0\0"s}) {
        PacketStream stream;
        stream.append(length + "rest");
        EXPECT_FALSE(stream.takePacket());
    }
}

TEST(SftpReply, isReadFieldByField) {
    const auto status = readReply("\x65\0\0\0\7\0\0\0\2\0\0\0\4gone\0\0\0\2en"s);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->id, 7U);
    EXPECT_EQ(status->status, noSuchFile);
    EXPECT_EQ(status->text, "gone");

    const auto attributes =
        readReply("\x69\0\0\0\1\0\0\0\x0F\0\0\0\0\0\0\1\0\0\0\1\xF5\0\0\0\x14\0\0\x81\xA4\0\0\0\1\0\0\0\2"s);
    ASSERT_TRUE(attributes);
    EXPECT_EQ(attributes->attributes.size, 256U);
    EXPECT_EQ(attributes->attributes.owner, (std::pair{501U, 20U}));
    EXPECT_TRUE(attributes->attributes.isRegular());
    EXPECT_EQ(attributes->attributes.times, (std::pair{1U, 2U}));

    const auto names = readReply("\x68\0\0\0\1\0\0\0\1\0\0\0\1a\0\0\0\1b\0\0\0\0"s);
    ASSERT_TRUE(names);
    EXPECT_EQ(names->names, std::vector{"a"s});
}

TEST(SftpReply, isNoneWhereItIsCutOrClaimsMoreThanItHas) {
    const std::string whole = "\x68\0\0\0\1\0\0\0\1\0\0\0\1a\0\0\0\1b\0\0\0\0"s;
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(readReply(whole.substr(0, size))) << size;
    EXPECT_FALSE(readReply("\x68\0\0\0\1\xFF\xFF\xFF\xFF\0\0\0\1a"s));
    EXPECT_FALSE(readReply("\x67\0\0\0\1\xFF\xFF\xFF\xFF"s));
    EXPECT_FALSE(readReply("\x01\0\0\0\1"s));
}

TEST(SftpReply, ofAnyBytesIsReadOrRefused) {
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes(random() % 64, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random() % 4 == 0 ? random() : random() % 4);
        if (!bytes.empty()) bytes[0] = static_cast<char>(101 + random() % 6);
        const auto reply = readReply(bytes);
        EXPECT_LE(reply ? reply->text.size() : 0, bytes.size());
    }
}

}  // namespace
}  // namespace far_phones_test
