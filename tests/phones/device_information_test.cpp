// SPDX-License-Identifier: MIT
#include "hosts/phones/device_information.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include "hosts/phones/phone_file_system.h"
#include "platform/foundation/property_list.h"
#include "tests/kit/temporary_folder.h"
#include "tests/kit/test_phone.h"

namespace {

using hosts::DeviceInformation;
using platform::Dictionary;
using platform::Value;
using testing::HasSubstr;
using testing::StartsWith;

constexpr auto systemVersion = "/System/Library/CoreServices/SystemVersion.plist";
constexpr auto list = "/device-information.plist";

std::string xmlOf(const Dictionary& content) {
    return platform::writeXmlPropertyList(Value(content)).bytes.value();
}

std::string binaryOf(const Dictionary& content) {
    return platform::writeBinaryPropertyList(Value(content)).bytes.value();
}

class DeviceInformationTest : public testing::Test {
protected:
    std::string phoneFolder() const { return phone.machinePath("/").string(); }

    /// Puts the bytes into a file of the machine and makes it the list.
    bool useFile(const std::string& bytes) {
        kit::writeText(file, bytes);
        return use(file);
    }

    bool use(const std::string& path) {
        const auto used = information.useFile(path);
        error = used ? "" : used.error().text();
        return used.has_value();
    }

    kit::EventLog log;
    kit::TestPhone phone{log};
    DeviceInformation information{phone, phoneFolder()};
    kit::TemporaryFolder folder;
    std::string file = folder / "device.plist";
    std::string error;
};

TEST_F(DeviceInformationTest, answersFromThePhonesList) {
    const Dictionary usage{{"TotalDiskCapacity", std::uint64_t{16000000000}}};
    phone.put(list, Dictionary{{"UniqueDeviceID", "7c19"},
                               {"ProductVersion", "8.1.2"},
                               {"ProductType", "iPhone7,2"},
                               {"DiskUsage", usage},
                               {"DeviceColor", 3},
                               {"CPUArchitecture", "arm64"}});
    EXPECT_EQ(information.copyAnswer("UniqueDeviceID"), Value("7c19"));
    EXPECT_EQ(information.copyAnswer("ProductVersion"), Value("8.1.2"));
    EXPECT_EQ(information.copyAnswer("ProductType"), Value("iPhone7,2"));
    EXPECT_EQ(information.copyAnswer("DiskUsage"), Value(usage));
    EXPECT_EQ(information.copyAnswer("DeviceColor"), Value(3));
    EXPECT_EQ(information.copyAnswer("CPUArchitecture"), Value("arm64"));
}

TEST_F(DeviceInformationTest, answersAllSixQuestionsForTheSamplePhone) {
    const auto files = hosts::PhoneFileSystem::open(TEST_SAMPLE_PHONE);
    ASSERT_TRUE(files) << files.error().text();
    DeviceInformation sample{*files, TEST_SAMPLE_PHONE};
    for (const char* key :
         {"UniqueDeviceID", "ProductVersion", "ProductType", "DiskUsage", "DeviceColor", "CPUArchitecture"}) {
        EXPECT_TRUE(sample.copyAnswer(key)) << key;
    }
}

TEST_F(DeviceInformationTest, readsABinaryListToo) {
    phone.put(list, binaryOf({{"ProductType", "iPhone7,2"}}));
    EXPECT_EQ(information.copyAnswer("ProductType"), Value("iPhone7,2"));
}

TEST_F(DeviceInformationTest, readsThePhonesListAnewForEachAnswer) {
    phone.put(list, Dictionary{{"DeviceColor", "black"}});
    EXPECT_EQ(information.copyAnswer("DeviceColor"), Value("black"));
    phone.put(list, Dictionary{{"DeviceColor", "white"}});
    EXPECT_EQ(information.copyAnswer("DeviceColor"), Value("white"));
}

TEST_F(DeviceInformationTest, answersNothingAboutWhatNobodyTells) {
    for (const char* key : {"UniqueDeviceID", "ProductType", "DeviceColor", "CPUArchitecture", "SerialNumber", ""})
        EXPECT_FALSE(information.copyAnswer(key)) << key;
    EXPECT_FALSE(information.copyAnswer("ProductVersion"));
}

TEST_F(DeviceInformationTest, takesTheVersionFromTheSystemWhereTheListLacksIt) {
    phone.put(systemVersion, Dictionary{{"ProductVersion", "9.0"}, {"ProductType", "not asked here"}});
    EXPECT_EQ(information.copyAnswer("ProductVersion"), Value("9.0"));
    EXPECT_FALSE(information.copyAnswer("ProductType"));
    phone.put(list, Dictionary{{"DeviceColor", "black"}});
    EXPECT_EQ(information.copyAnswer("ProductVersion"), Value("9.0"));
    phone.put(list, Dictionary{{"ProductVersion", "8.1.2"}});
    EXPECT_EQ(information.copyAnswer("ProductVersion"), Value("8.1.2"));
}

TEST_F(DeviceInformationTest, measuresTheFileSystemWhereTheListLacksTheDiskUsage) {
    struct statvfs status {};
    ASSERT_EQ(::statvfs(phoneFolder().c_str(), &status), 0);
    const auto answer = information.copyAnswer("DiskUsage");
    ASSERT_TRUE(answer && answer->dictionary());
    const Dictionary& usage = *answer->dictionary();
    const auto bytes = [&](std::string_view key) {
        const Value* value = usage.find(key);
        EXPECT_TRUE(value && value->integer()) << key;
        return value && value->integer() ? value->integer()->bits : 0;
    };
    EXPECT_EQ(bytes("TotalDiskCapacity"), std::uint64_t{status.f_blocks} * status.f_frsize);
    EXPECT_EQ(bytes("TotalDataCapacity"), bytes("TotalDiskCapacity"));
    EXPECT_EQ(bytes("TotalDataAvailable"), bytes("AmountDataAvailable") + bytes("AmountDataReserved"));
    EXPECT_GT(bytes("AmountDataAvailable"), 0u);
    EXPECT_LE(bytes("TotalDataAvailable"), bytes("TotalDataCapacity"));
}

TEST_F(DeviceInformationTest, measuresNothingWhereThereIsNoFolder) {
    DeviceInformation lost{phone, "/no/such/folder"};
    EXPECT_FALSE(lost.copyAnswer("DiskUsage"));
}

TEST_F(DeviceInformationTest, answersFromTheUsersFileInThePlaceOfThePhonesList) {
    phone.put(list, Dictionary{{"DeviceColor", "black"}, {"ProductType", "iPhone7,2"}});
    phone.put(systemVersion, Dictionary{{"ProductVersion", "9.0"}});
    ASSERT_TRUE(useFile(xmlOf({{"DeviceColor", "white"}}))) << error;
    EXPECT_EQ(information.copyAnswer("DeviceColor"), Value("white"));
    EXPECT_FALSE(information.copyAnswer("ProductType"));
    EXPECT_EQ(information.copyAnswer("ProductVersion"), Value("9.0"));
    EXPECT_TRUE(information.copyAnswer("DiskUsage"));
}

TEST_F(DeviceInformationTest, readsTheUsersFileOnce) {
    ASSERT_TRUE(useFile(binaryOf({{"DeviceColor", "white"}}))) << error;
    kit::writeText(file, "gone");
    EXPECT_EQ(information.copyAnswer("DeviceColor"), Value("white"));
}

TEST_F(DeviceInformationTest, saysWhatIsWrongWithTheUsersFileAndKeepsToThePhonesList) {
    phone.put(list, Dictionary{{"DeviceColor", "black"}});
    EXPECT_FALSE(useFile("<plist version=\"1.0\">\n<dict><foo/></dict>\n</plist>"));
    EXPECT_THAT(error, StartsWith(file + ":2:"));
    EXPECT_FALSE(useFile("bplist00 and no more"));
    EXPECT_THAT(error, StartsWith(file + ": offset "));
    EXPECT_FALSE(useFile("<plist version=\"1.0\"><array/></plist>"));
    EXPECT_EQ(error, file + ": the root is no dictionary");
    EXPECT_FALSE(useFile(""));
    EXPECT_THAT(error, StartsWith(file + ":"));
    EXPECT_FALSE(use(folder / "missing"));
    EXPECT_EQ(error, "cannot read " + (folder / "missing") + ": No such file or directory");
    EXPECT_FALSE(use(folder.path()));
    EXPECT_THAT(error, StartsWith("cannot read " + folder.path().string()));
    EXPECT_EQ(information.copyAnswer("DeviceColor"), Value("black"));
}

TEST_F(DeviceInformationTest, refusesAUsersFileWithoutEnd) {
    EXPECT_FALSE(use("/dev/zero"));
    EXPECT_EQ(error, "/dev/zero: it is a device, not a file");
}

TEST_F(DeviceInformationTest, waitsForNoFifoInPlaceOfAUsersFile) {
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_FALSE(use(fifo));
    EXPECT_EQ(error, fifo + ": it is a FIFO, not a file");
}

TEST_F(DeviceInformationTest, refusesAUsersFileThatIsTooLarge) {
    const std::string large = folder / "large";
    kit::writeText(large, "");
    std::filesystem::resize_file(large, hosts::DeviceInformation::fileLimit + 1);
    EXPECT_FALSE(use(large));
    EXPECT_EQ(error, large + ": too large for a list of device information");
}

TEST_F(DeviceInformationTest, answersAsWithoutAListWhereTheListIsMalformed) {
    phone.put(systemVersion, Dictionary{{"ProductVersion", "9.0"}});
    for (const std::string& hostile :
         {std::string{}, std::string(100, '\0'), std::string{"bplist00"}, std::string(1 << 20, '<'),
          std::string{"<plist><dict><key>ProductVersion</key><string>8</string>"}, std::string{"\xFF\xFE<\0p\0", 6},
          std::string{"bplist00\xD1\x01\x00\x08\x0B\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x02\0\0\0\0\0\0\0\0\xFF\xFF\xFF",
                      36}}) {
        phone.put(list, hostile);
        EXPECT_EQ(information.copyAnswer("ProductVersion"), Value("9.0"));
        EXPECT_FALSE(information.copyAnswer("UniqueDeviceID"));
    }
}

TEST_F(DeviceInformationTest, bearsAListThatNestsWithoutMeasure) {
    std::string nested = "<plist version=\"1.0\"><dict><key>DeviceColor</key>";
    for (int depth = 0; depth < 200000; ++depth)
        nested += "<array>";
    phone.put(list, nested);
    EXPECT_FALSE(information.copyAnswer("DeviceColor"));
}

// Each array holds the next one twice: a few hundred bytes that unfold to more than any memory.
TEST_F(DeviceInformationTest, bearsAListThatUnfoldsWithoutMeasure) {
    Value value = "leaf";
    for (int depth = 0; depth < 100; ++depth)
        value = Value(platform::Array{value, value});
    phone.put(list, binaryOf({{"DeviceColor", value}}));
    const auto answer = information.copyAnswer("DeviceColor");
    ASSERT_TRUE(answer && answer->array());
    EXPECT_EQ(*answer, value);
}

TEST_F(DeviceInformationTest, passesOverAListThatIsTooLarge) {
    phone.put(systemVersion, Dictionary{{"ProductVersion", "9.0"}});
    const std::string padding(DeviceInformation::fileLimit, ' ');
    phone.put(list, xmlOf({{"ProductVersion", "8.1.2"}}) + padding);
    EXPECT_EQ(information.copyAnswer("ProductVersion"), Value("9.0"));
}

TEST_F(DeviceInformationTest, passesOverAListThatIsNoRegularFile) {
    ASSERT_EQ(::mkfifo(phone.machinePath(list).c_str(), 0600), 0);
    EXPECT_FALSE(information.copyAnswer("DeviceColor"));
    phone.remove(list);
    phone.put(std::string{list} + "/inner", "");
    EXPECT_FALSE(information.copyAnswer("DeviceColor"));
}

TEST_F(DeviceInformationTest, doesNotFollowALinkOutOfThePhone) {
    kit::writeText(file, xmlOf({{"DeviceColor", "white"}}));
    std::filesystem::create_symlink(file, phone.machinePath(list));
    EXPECT_FALSE(information.copyAnswer("DeviceColor"));
}

TEST_F(DeviceInformationTest, passesAnswersOfAnyKindOnAsTheyAre) {
    const Dictionary odd{{"UniqueDeviceID", platform::Array{Value(1.5), Value(true)}},
                         {"DeviceColor", platform::Data(3)},
                         {"ProductType", platform::Null()}};
    phone.put(list, binaryOf(odd));
    for (const auto& [key, value] : odd)
        EXPECT_EQ(information.copyAnswer(key), value) << key;
}

}  // namespace
