// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "platform/foundation/property_list.h"
#include "tests/property_lists/binary_file.h"

namespace binary_writing_test {

namespace {

using namespace platform;

std::string written(const Value& value) {
    const PropertyListWriting writing = writeBinaryPropertyList(value);
    return writing ? *writing.bytes : "refused: " + writing.reason;
}

/// The one object of a file that holds nothing else.
std::string object(const Value& value) {
    const std::string bytes = written(value);
    const std::size_t around = 8 + 1 + 32;
    return bytes.size() > around ? bytes.substr(8, bytes.size() - around) : bytes;
}

std::size_t objectCount(const Value& value) {
    const std::string bytes = written(value);
    return static_cast<unsigned char>(bytes[bytes.size() - 17]) +
           256u * static_cast<unsigned char>(bytes[bytes.size() - 18]);
}

Value nested(std::size_t depth, Value innermost) {
    for (std::size_t level = 0; level < depth; ++level)
        innermost = Array{std::move(innermost)};
    return innermost;
}

TEST(BinaryWriting, writesIntegersInAsFewBytesAsHoldThem) {
    EXPECT_EQ(object(0), hex("10 00"));
    EXPECT_EQ(object(255), hex("10 FF"));
    EXPECT_EQ(object(256), hex("11 0100"));
    EXPECT_EQ(object(65535), hex("11 FFFF"));
    EXPECT_EQ(object(65536), hex("12 00010000"));
    EXPECT_EQ(object(std::int64_t{4294967295}), hex("12 FFFFFFFF"));
    EXPECT_EQ(object(std::int64_t{4294967296}), hex("13 0000000100000000"));
    EXPECT_EQ(object(std::numeric_limits<std::int64_t>::max()), hex("13 7FFFFFFFFFFFFFFF"));
    EXPECT_EQ(object(-1), hex("13 FFFFFFFFFFFFFFFF"));
    EXPECT_EQ(object(std::uint64_t{1} << 63), hex("14 0000000000000000 8000000000000000"));
}

TEST(BinaryWriting, writesEachKind) {
    EXPECT_EQ(object(Null()), hex("00"));
    EXPECT_EQ(object(false), hex("08"));
    EXPECT_EQ(object(true), hex("09"));
    EXPECT_EQ(object(1.5), hex("23 3FF8000000000000"));
    EXPECT_EQ(object(Date{1.5}), hex("33 3FF8000000000000"));
    EXPECT_EQ(object(Uid{5}), hex("80 05"));
    EXPECT_EQ(object(Uid{0x10000}), hex("83 00010000"));
    EXPECT_EQ(object(Data{std::byte{1}, std::byte{2}}), hex("42 0102"));
    EXPECT_EQ(object(""), hex("50"));
    EXPECT_EQ(object("abc"), "Sabc");
    EXPECT_EQ(object("aé"), hex("62 0061 00E9"));
    EXPECT_EQ(object("\xF0\x9F\x98\x80"), hex("62 D83D DE00"));
    EXPECT_EQ(object(Array()), hex("A0"));
    EXPECT_EQ(object(Set()), hex("C0"));
    EXPECT_EQ(object(Dictionary()), hex("D0"));
}

TEST(BinaryWriting, writesLongCountsAsIntegers) {
    EXPECT_EQ(object(std::string(14, 'x')), hex("5E") + std::string(14, 'x'));
    EXPECT_EQ(object(std::string(15, 'x')), hex("5F 10 0F") + std::string(15, 'x'));
    EXPECT_EQ(object(Data(300)).substr(0, 4), hex("4F 11 012C"));
}

TEST(BinaryWriting, startsWithTheRoot) {
    EXPECT_EQ(written(Dictionary{{"a", "b"}}), hex("62706C6973743030 D10102 5161 5162 080B0D 000000000000 01 01"
                                                   "0000000000000003 0000000000000000 000000000000000F"));
}

TEST(BinaryWriting, writesEqualScalarsOnce) {
    EXPECT_EQ(objectCount(Array{1, 1, 1}), 2u);
    EXPECT_EQ(objectCount(Array{"a", "a", Dictionary{{"a", "a"}}}), 3u);
    EXPECT_EQ(objectCount(Array{Data(2), Data(2)}), 2u);
    EXPECT_EQ(objectCount(Array{1, 1.0, "1", true, Date{1}, Uid{1}}), 7u);
    EXPECT_EQ(objectCount(Array{0.0, -0.0}), 3u);
}

TEST(BinaryWriting, writesSharedContainersOnce) {
    Value value = "x";
    for (int count = 0; count < 500; ++count)
        value = Array{value, value};
    EXPECT_EQ(objectCount(value), 501u);
    const PropertyListReading reading = readPropertyList(written(value));
    ASSERT_TRUE(reading) << reading.error.reason;
    EXPECT_TRUE(*reading.value == value);
}

TEST(BinaryWriting, widensReferencesAndOffsetsWithTheFile) {
    for (const int count : {250, 254, 255, 256, 300, 65534, 65535, 65536, 70000}) {
        Array numbers;
        for (int number = 0; number < count; ++number)
            numbers.push_back(number);
        const Value value = std::move(numbers);
        const PropertyListReading reading = readPropertyList(written(value));
        ASSERT_TRUE(reading) << count << ": " << reading.error.reason;
        EXPECT_TRUE(*reading.value == value) << count;
    }
}

TEST(BinaryWriting, keepsKeysThatAreNoStrings) {
    Dictionary dictionary{{"a", 1}};
    dictionary.addOddEntry(5, "b");
    dictionary.addOddEntry(Null(), Array{});
    const PropertyListReading reading = readPropertyList(written(dictionary));
    ASSERT_TRUE(reading) << reading.error.reason;
    EXPECT_TRUE(*reading.value == Value(dictionary));
}

TEST(BinaryWriting, refusesWhatCouldNotBeReadAgain) {
    Dictionary containerKey;
    containerKey.addOddEntry(Array{}, 1);
    EXPECT_FALSE(writeBinaryPropertyList(containerKey));
    EXPECT_FALSE(writeBinaryPropertyList("\xFF"));
    EXPECT_FALSE(writeBinaryPropertyList(Dictionary{{"\xC3", 1}}));
    EXPECT_FALSE(writeBinaryPropertyList(Date{std::numeric_limits<double>::infinity()}));
    EXPECT_TRUE(writeBinaryPropertyList(nested(512, "x")));
    EXPECT_TRUE(writeBinaryPropertyList(nested(512, Array())));
    EXPECT_FALSE(writeBinaryPropertyList(nested(513, "x")));
    EXPECT_FALSE(writeBinaryPropertyList(nested(513, Array())));
}

TEST(BinaryWriting, countsTheDepthOfSharedContainersAlongEveryPath) {
    const Value shared = nested(300, "x");
    EXPECT_TRUE(writeBinaryPropertyList(Array{shared, nested(211, shared)}));
    EXPECT_FALSE(writeBinaryPropertyList(Array{shared, nested(212, shared)}));
}

/// Two blocks of text, each with another one that leaves the same behind in libstdc++'s hash of bytes, whatever was
/// hashed before: the highest bit that the first half changes in the hash's state, the second changes back.
struct Pair {
    std::string one;
    std::string other;
};

constexpr std::uint64_t multiplier = 0xc6a4a7935bd1e995;

/// The block that the hash mixes into this one.
std::uint64_t unmixed(std::uint64_t mixed) {
    std::uint64_t inverse = multiplier;
    for (int step = 0; step < 6; ++step)
        inverse *= 2 - multiplier * inverse;
    const std::uint64_t shifted = mixed * inverse;
    return (shifted ^ shifted >> 47) * inverse;
}

std::string bytesOf(std::uint64_t block) {
    return std::string(reinterpret_cast<const char*>(&block), sizeof block);
}

Pair pairOf(std::uint64_t seed) {
    constexpr std::uint64_t highest = std::uint64_t{1} << 63;
    return {bytesOf(unmixed(seed)) + bytesOf(unmixed(~seed)),
            bytesOf(unmixed(seed ^ highest)) + bytesOf(unmixed(~seed ^ highest))};
}

Data dataOf(std::string_view bytes) {
    Data data;
    for (const char byte : bytes)
        data.push_back(static_cast<std::byte>(byte));
    return data;
}

/// 2^doublings different data of one hash.
Array dataOfOneHash(int doublings) {
    std::vector<std::string> all{""};
    for (int doubling = 0; doubling < doublings; ++doubling) {
        const Pair pair = pairOf(0x0123456789abcdef * static_cast<std::uint64_t>(doubling + 1));
        std::vector<std::string> longer;
        for (const std::string& bytes : all) {
            longer.push_back(bytes + pair.one);
            longer.push_back(bytes + pair.other);
        }
        all = std::move(longer);
    }
    Array array;
    for (const std::string& bytes : all) {
        EXPECT_EQ(std::hash<std::string>()(bytes), std::hash<std::string>()(all.front()));
        array.push_back(dataOf(bytes));
    }
    return array;
}

// In a table of hashes each would be compared with all before it: minutes of computing, where this takes less than a
// second.
TEST(BinaryWriting, takesNoLongerForDataThatAreChosenToHaveOneHash) {
    Array array = dataOfOneHash(17);
    const std::size_t count = array.size();
    for (std::size_t number = 0; number < 1000; ++number)
        array.push_back(
            dataOf({reinterpret_cast<const char*>(array[number].data()->data()), array[number].data()->size()}));
    const Value value = std::move(array);
    const std::clock_t start = std::clock();
    const std::string bytes = written(value);
    EXPECT_LT(std::clock() - start, 20 * CLOCKS_PER_SEC);
    const PropertyListReading reading = readPropertyList(bytes);
    ASSERT_TRUE(reading) << reading.error.reason;
    EXPECT_TRUE(*reading.value == value);
    EXPECT_EQ(bytes.substr(bytes.size() - 24, 8), bigEndian(count + 1, 8)) << "equal data are written once";
}

}  // namespace
}  // namespace binary_writing_test
