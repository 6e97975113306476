// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <string>

#include "platform/foundation/property_list.h"
#include "tests/kit/print.h"
#include "tests/property_lists/binary_file.h"

namespace binary_reading_test {

namespace {

using namespace platform;
using namespace std::string_literals;

std::optional<Value> read(const std::string& bytes) {
    return readPropertyList(bytes).value;
}

std::optional<Value> readObject(const std::string& object) {
    return read(binaryFileOf(object));
}

std::optional<Value> readFile(const BinaryFile& file) {
    return read(file.bytes());
}

const BinaryFile simple{.objects = {hex("D1 01 02"), hex("51 61"), hex("51 62")}};
const Value simpleValue = Dictionary{{"a", "b"}};

// -- Scalars -----------------------------------------------------------------------------------------

TEST(BinaryReading, readsNullAndBooleans) {
    EXPECT_EQ(readObject(hex("00")), Value());
    EXPECT_EQ(readObject(hex("08")), Value(false));
    EXPECT_EQ(readObject(hex("09")), Value(true));
}

TEST(BinaryReading, readsIntegersOfEachSize) {
    EXPECT_EQ(readObject(hex("10 FF")), Value(255));
    EXPECT_EQ(readObject(hex("11 FFFF")), Value(65535));
    EXPECT_EQ(readObject(hex("12 FFFFFFFF")), Value(std::int64_t{4294967295}));
    EXPECT_EQ(readObject(hex("13 FFFFFFFFFFFFFFFF")), Value(-1));
    EXPECT_EQ(readObject(hex("13 8000000000000000")), Value(std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(readObject(hex("14 0000000000000000 FFFFFFFFFFFFFFFF")),
              Value(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_EQ(readObject(hex("14 0000000000000000 0000000000000005")), Value(5));
    EXPECT_EQ(readObject(hex("14 FFFFFFFFFFFFFFFF 8000000000000000")), Value(std::uint64_t{1} << 63));
    EXPECT_EQ(readObject(hex("15") + std::string(32, '\0')), std::nullopt);
    EXPECT_EQ(readObject(hex("1F") + std::string(64, '\0')), std::nullopt);
}

TEST(BinaryReading, readsRealsOfFourAndEightBytes) {
    EXPECT_EQ(readObject(hex("22 3FC00000")), Value(1.5));
    EXPECT_EQ(readObject(hex("22 3DCCCCCD")), Value(static_cast<double>(0.1f)));
    EXPECT_EQ(readObject(hex("23 3FB999999999999A")), Value(0.1));
    EXPECT_EQ(readObject(hex("23 8000000000000000")), Value(-0.0));
    EXPECT_TRUE(std::isnan(*readObject(hex("23 7FF8000000000000"))->real()));
    for (const char* object : {"20 00", "21 0000"})
        EXPECT_EQ(readObject(hex(object)), std::nullopt) << object;
    EXPECT_EQ(readObject(hex("24") + std::string(16, '\0')), std::nullopt);
}

TEST(BinaryReading, readsDatesThatAreFinite) {
    EXPECT_EQ(readObject(hex("33 3FE8000000000000")), Value(Date{0.75}));
    EXPECT_EQ(readObject(hex("33 7FF0000000000000")), std::nullopt);
    EXPECT_EQ(readObject(hex("33 FFF8000000000000")), std::nullopt);
    EXPECT_EQ(readObject(hex("32 3F800000")), std::nullopt);
    EXPECT_EQ(readObject(hex("30 00")), std::nullopt);
}

TEST(BinaryReading, readsUidsOfUpTo32Bits) {
    EXPECT_EQ(readObject(hex("80 05")), Value(Uid{5}));
    EXPECT_EQ(readObject(hex("82 010203")), Value(Uid{0x010203}));
    EXPECT_EQ(readObject(hex("83 FFFFFFFF")), Value(Uid{0xFFFFFFFF}));
    EXPECT_EQ(readObject(hex("84 0100000000")), std::nullopt);
    EXPECT_EQ(readObject(hex("84 0000000007")), Value(Uid{7}));
    EXPECT_EQ(readObject(hex("8F") + std::string(15, '\0') + "\x05"), Value(Uid{5}));
    EXPECT_EQ(readObject(hex("8F 01") + std::string(15, '\0')), std::nullopt);
}

TEST(BinaryReading, readsAsciiStringsAsLatin1) {
    EXPECT_EQ(readObject(hex("50")), Value(""));
    EXPECT_EQ(readObject("Sabc"), Value("abc"));
    EXPECT_EQ(readObject("Ra\xE9"), Value("aé"));
    EXPECT_EQ(readObject("Ra\0"s), Value("a\0"s));
    EXPECT_EQ(readObject(hex("5F 10 0F") + std::string(15, 'x')), Value(std::string(15, 'x')));
    EXPECT_EQ(readObject(hex("5F 10 02") + "ab"), Value("ab"));
}

TEST(BinaryReading, readsUtf16Strings) {
    EXPECT_EQ(readObject(hex("62 0061 20AC")), Value("a€"));
    EXPECT_EQ(readObject(hex("62 D83D DE00")), Value("\xF0\x9F\x98\x80"));
    EXPECT_EQ(readObject(hex("61 FEFF")), Value("\xEF\xBB\xBF"));
    EXPECT_EQ(readObject(hex("61 FFFE")), Value("\xEF\xBF\xBE"));
    EXPECT_EQ(readObject(hex("63 D83D 0061 DE00")), Value("\xEF\xBF\xBD"
                                                          "a\xEF\xBF\xBD"));
    EXPECT_EQ(readObject(hex("61 D83D")), Value("\xEF\xBF\xBD"));
    EXPECT_EQ(readObject(hex("60")), std::nullopt);
    EXPECT_EQ(readObject(hex("6F 10 00")), std::nullopt);
}

TEST(BinaryReading, readsCountsOfEachSize) {
    for (const char* count :
         {"10 03", "11 0003", "12 00000003", "13 0000000000000003", "14 00000000000000000000000000000003"}) {
        EXPECT_EQ(readObject(hex("5F") + hex(count) + "abc"), Value("abc")) << count;
        EXPECT_EQ(readObject(hex("4F") + hex(count) + "abc"),
                  Value(Data{std::byte{'a'}, std::byte{'b'}, std::byte{'c'}}));
    }
    for (const char* count : {"22 00000003", "33 0000000000000003", "51 03", "FF", ""}) {
        EXPECT_EQ(readObject(hex("5F") + hex(count) + "abc"), std::nullopt) << count;
    }
}

TEST(BinaryReading, rejectsCountsOfMoreThanIsThere) {
    for (const char* object :
         {"52 61", "61 00", "42 00", "5F 10 04 616263", "5F 13 FFFFFFFFFFFFFFFF 61", "6F 13 8000000000000001 0061",
          "AF 13 0100000000000000 00", "DF 13 8000000000000000 00", "AF 12 FFFFFFFF 00", "A2 00", "D1 00", "10",
          "13 00000000000000", "5F 13 00000003", "5F"}) {
        EXPECT_EQ(readObject(hex(object)), std::nullopt) << object;
        EXPECT_EQ(read(binaryDictionaryOf(hex(object))), std::nullopt) << object;
    }
}

TEST(BinaryReading, rejectsUnknownKinds) {
    for (const char* object :
         {"01", "07", "0A", "0B", "0C", "0D", "0E", "0F", "70", "71 61", "90", "B0", "B1 00", "E0", "F0", "FF"}) {
        EXPECT_EQ(readObject(hex(object)), std::nullopt) << object;
        EXPECT_EQ(read(binaryDictionaryOf(hex(object))), std::nullopt) << object;
    }
}

TEST(BinaryReading, rejectsWhatIsMalformedOnlyWhereItIsUsed) {
    for (const char* object : {"0F", "70", "60", "5F 22 00000000", "33 7FF0000000000000", "84 0100000000"}) {
        EXPECT_EQ(readFile({.objects = {hex("A0"), hex(object)}}), Value(Array())) << object;
        EXPECT_EQ(readFile({.objects = {hex("A1 01"), hex(object)}}), std::nullopt) << object;
    }
}

/// XML cannot say the year of such a date.
TEST(BinaryReading, readsDatesBeyondTheYearsOf32Bits) {
    const auto date = readObject(hex("33 43ABC16D674EC800"));
    EXPECT_EQ(date, Value(Date{1e18}));
    EXPECT_FALSE(writeXmlPropertyList(*date));
}

// -- Containers --------------------------------------------------------------------------------------

TEST(BinaryReading, readsContainers) {
    EXPECT_EQ(readObject(hex("A0")), Value(Array()));
    EXPECT_EQ(readObject(hex("C0")), Value(Set()));
    EXPECT_EQ(readObject(hex("D0")), Value(Dictionary()));
    EXPECT_EQ(readFile({.objects = {hex("A3 01 02 01"), hex("09"), hex("10 05")}}), Value(Array{true, 5, true}));
    EXPECT_EQ(readFile({.objects = {hex("C2 01 01"), hex("09")}}), Value(Set{{true, true}}));
    EXPECT_EQ(readFile(simple), simpleValue);
}

TEST(BinaryReading, firstOfEqualKeysWins) {
    EXPECT_EQ(readFile({.objects = {hex("D2 01 02 03 04"), "Qa", "Qa", hex("08"), hex("09")}}),
              Value(Dictionary{{"a", false}}));
    EXPECT_EQ(readFile({.objects = {hex("D2 01 02 03 04"), "Qa", hex("61 0061"), hex("09"), hex("08")}}),
              Value(Dictionary{{"a", true}}));
}

TEST(BinaryReading, keepsKeysThatAreNoStrings) {
    Dictionary expected{{"a", true}};
    expected.addOddEntry(5, false);
    EXPECT_EQ(readFile({.objects = {hex("D2 01 02 03 04"), hex("10 05"), "Qa", hex("08"), hex("09")}}),
              Value(expected));
    for (const char* key : {"00", "09", "33 0000000000000000", "40", "80 01", "22 00000000"}) {
        EXPECT_TRUE(readFile({.objects = {hex("D1 01 02"), hex(key), hex("09")}})) << key;
    }
}

TEST(BinaryReading, rejectsContainersAsKeys) {
    for (const char* key : {"A0", "C0", "D0"}) {
        EXPECT_EQ(readFile({.objects = {hex("D1 01 02"), hex(key), hex("09")}}), std::nullopt) << key;
    }
    EXPECT_EQ(readFile({.objects = {hex("A2 01 02"), hex("A0"), hex("D1 01 01")}}), std::nullopt);
}

TEST(BinaryReading, keepsADictionaryOfOnlyAUidKey) {
    EXPECT_EQ(readFile({.objects = {hex("D1 01 02"), "VCF$UID", hex("10 05")}}), Value(Dictionary{{"CF$UID", 5}}));
}

TEST(BinaryReading, rejectsReferencesOutOfRange) {
    EXPECT_EQ(readObject(hex("A1 01")), std::nullopt);
    EXPECT_EQ(readObject(hex("A1 FF")), std::nullopt);
    EXPECT_EQ(readFile({.objects = {hex("D1 01 02"), "Qa"}}), std::nullopt);
    EXPECT_EQ(readFile({.objects = {hex("D1 02 01"), "Qa"}}), std::nullopt);
    EXPECT_EQ(readFile({.objects = {hex("A1 0000000000000000 8000000000000001"), hex("09")}, .referenceSize = 16}),
              std::nullopt);
}

TEST(BinaryReading, rejectsCycles) {
    EXPECT_EQ(readObject(hex("A1 00")), std::nullopt);
    EXPECT_EQ(readFile({.objects = {hex("D1 01 00"), "Qa"}}), std::nullopt);
    EXPECT_EQ(readFile({.objects = {hex("A1 01"), hex("A1 02"), hex("C1 00")}}), std::nullopt);
    EXPECT_EQ(readFile({.objects = {hex("A1 01"), hex("A1 01")}, .offsets = {8, 8}}), std::nullopt);
}

TEST(BinaryReading, ignoresCyclesThatAreNotUsed) {
    EXPECT_EQ(readFile({.objects = {hex("A0"), hex("A1 01")}}), Value(Array()));
}

/// Arrays around one object, each in the next.
std::string nested(std::size_t depth, const std::string& innermost) {
    BinaryFile file{.objects = {}};
    file.referenceSize = 2;
    for (std::size_t level = 1; level <= depth; ++level)
        file.objects.push_back("\xA1" + bigEndian(level, 2));
    file.objects.push_back(innermost);
    return file.bytes();
}

TEST(BinaryReading, takes512NestedContainers) {
    EXPECT_TRUE(read(nested(512, "Qx")));
    EXPECT_FALSE(read(nested(513, "Qx")));
    EXPECT_TRUE(read(nested(512, hex("A0"))));
    EXPECT_FALSE(read(nested(513, hex("A0"))));
}

TEST(BinaryReading, countsTheDepthOfSharedContainersAlongEveryPath) {
    /// The root holds the object in question, and behind it arrays that hold it some levels further in.
    const auto sharedAt = [](std::size_t depth) {
        BinaryFile file{.objects = {}};
        file.referenceSize = 2;
        const std::size_t chain = 300;
        file.objects.push_back("\xA2" + bigEndian(1, 2) + bigEndian(chain + 2, 2));
        for (std::size_t level = 1; level <= chain; ++level)
            file.objects.push_back("\xA1" + bigEndian(level + 1, 2));
        file.objects.push_back("Qx");
        for (std::size_t level = 1; level < depth; ++level) {
            file.objects.push_back("\xA1" + bigEndian(chain + 2 + level, 2));
        }
        file.objects.push_back("\xA1" + bigEndian(1, 2));
        return file.bytes();
    };
    EXPECT_TRUE(read(sharedAt(211)));
    EXPECT_FALSE(read(sharedAt(212)));
}

TEST(BinaryReading, sharesWhatTheFileShares) {
    const auto value = readFile({.objects = {hex("A4 01 01 02 02"), hex("A1 02"), "Sabc"}});
    ASSERT_TRUE(value && value->array());
    const Array& items = *value->array();
    EXPECT_EQ(items[0].array(), items[1].array());
    EXPECT_EQ(items[2].string(), items[3].string());
    EXPECT_EQ(items[0].array()->front().string(), items[2].string());
}

// -- The file ----------------------------------------------------------------------------------------

TEST(BinaryReading, takesAnyVersionOfTheSecondDigit) {
    for (const char* version : {"bplist00", "bplist01", "bplist0x"}) {
        BinaryFile file = simple;
        file.header = version;
        EXPECT_EQ(readFile(file), simpleValue) << version;
    }
    BinaryFile nul = simple;
    nul.header = "bplist0\0"s;
    EXPECT_EQ(readFile(nul), simpleValue);
    for (const char* version : {"bplist10", "Bplist00", "bplist  ", "xbplist00"}) {
        BinaryFile file = simple;
        file.header = version;
        EXPECT_EQ(readFile(file), std::nullopt) << version;
    }
}

TEST(BinaryReading, takesReferencesAndOffsetsOfEverySize) {
    for (std::size_t size = 1; size <= 16; ++size) {
        BinaryFile file{.objects = {"\xD1" + bigEndian(1, size) + bigEndian(2, size), "Qa", "Qb"}};
        file.referenceSize = size;
        EXPECT_EQ(readFile(file), simpleValue) << size;
        BinaryFile offsets = simple;
        offsets.offsetSize = size;
        EXPECT_EQ(readFile(offsets), simpleValue) << size;
    }
}

TEST(BinaryReading, countsTheLowBitsOfLongReferencesAndOffsets) {
    const std::string high = hex("FF 00000000000001");
    EXPECT_EQ(readFile({.objects = {"\xD1" + high + bigEndian(1, 8) + high + bigEndian(2, 8), "Qa", "Qb"},
                        .referenceSize = 16}),
              simpleValue);
    std::string bytes = simple.bytes();
    const std::string body = bytes.substr(0, 15);
    std::string trailer = bytes.substr(bytes.size() - 32);
    trailer[6] = 16;
    std::string table;
    for (const std::size_t offset : {8u, 11u, 13u})
        table += high + bigEndian(offset, 8);
    EXPECT_EQ(read(body + table + trailer), simpleValue);
    table.replace(table.size() - 8, 8, bigEndian(15, 8));
    EXPECT_EQ(read(body + table + trailer), std::nullopt);
}

TEST(BinaryReading, rejectsSizesOutOfRange) {
    for (const std::size_t place : {6u, 7u}) {
        for (const int size : {0, 17, 255}) {
            std::string bytes = simple.bytes();
            bytes[bytes.size() - 32 + place] = static_cast<char>(size);
            EXPECT_EQ(read(bytes), std::nullopt) << place << ' ' << size;
        }
    }
}

TEST(BinaryReading, takesAGapBeforeTheOffsetTable) {
    BinaryFile file = simple;
    file.gap = std::string(50, '\xFF');
    EXPECT_EQ(readFile(file), simpleValue);
}

TEST(BinaryReading, takesARootThatIsNotTheFirst) {
    EXPECT_EQ(readFile({.objects = {"Qa", "Qb", hex("D1 00 01")}, .root = 2}), simpleValue);
    BinaryFile file = simple;
    file.root = 3;
    EXPECT_EQ(readFile(file), std::nullopt);
    file.root = std::uint64_t{1} << 63;
    EXPECT_EQ(readFile(file), std::nullopt);
}

TEST(BinaryReading, rejectsOffsetsAtOrBehindTheTableUsedOrNot) {
    const std::size_t table = 8 + 3 + 2 + 2;
    for (const std::size_t offset : {table, table + 1, std::size_t{0xFFFF}}) {
        EXPECT_EQ(readFile({.objects = simple.objects, .offsets = {8, 11, offset}}), std::nullopt) << offset;
        EXPECT_EQ(readFile({.objects = simple.objects, .offsets = {8, 11, 13, offset}}), std::nullopt) << offset;
    }
}

TEST(BinaryReading, rejectsObjectsInTheHeaderOnlyWhenTheyAreUsed) {
    for (const std::size_t offset : {0u, 7u}) {
        EXPECT_EQ(readFile({.objects = simple.objects, .offsets = {8, 11, offset}}), std::nullopt);
        EXPECT_EQ(readFile({.objects = simple.objects, .offsets = {8, 11, 13, offset}}), simpleValue);
    }
}

TEST(BinaryReading, takesObjectsThatOverlap) {
    EXPECT_EQ(readFile({.objects = simple.objects, .offsets = {8, 11, 11}}), Value(Dictionary{{"a", "a"}}));
    EXPECT_EQ(readFile({.objects = {hex("D1 01 02"), "SaQb"}, .offsets = {8, 11, 13}}),
              Value(Dictionary{{"aQb", "b"}}));
}

TEST(BinaryReading, wantsTheTableRightBeforeTheTrailer) {
    const std::string bytes = simple.bytes();
    const std::string body = bytes.substr(0, bytes.size() - 32);
    const std::string trailer = bytes.substr(bytes.size() - 32);
    EXPECT_TRUE(read(body + trailer));
    EXPECT_FALSE(read(body + '\0' + trailer));
    EXPECT_FALSE(read(body + trailer + '\n'));
    EXPECT_FALSE(read(body.substr(0, body.size() - 1) + trailer));
    EXPECT_FALSE(read(trailer));
    EXPECT_FALSE(read("bplist00"));
    EXPECT_FALSE(read("bplist00" + trailer));
}

TEST(BinaryReading, rejectsTrailersWhoseNumbersOverflow) {
    const std::string bytes = simple.bytes();
    for (const std::size_t place : {8u, 24u}) {
        for (const std::uint64_t number : {std::uint64_t{0}, UINT64_MAX, UINT64_MAX / 2, UINT64_MAX / 2 + 3,
                                           std::uint64_t{1} << 32, std::uint64_t{1} << 63}) {
            std::string changed = bytes;
            changed.replace(bytes.size() - 32 + place, 8, bigEndian(number, 8));
            EXPECT_EQ(read(changed), std::nullopt) << place << ' ' << number;
        }
    }
}

TEST(BinaryReading, ignoresTheUnusedBytesOfTheTrailer) {
    std::string bytes = simple.bytes();
    for (std::size_t place = 0; place < 6; ++place)
        bytes[bytes.size() - 32 + place] = '\xFF';
    EXPECT_EQ(read(bytes), simpleValue);
}

}  // namespace
}  // namespace binary_reading_test
