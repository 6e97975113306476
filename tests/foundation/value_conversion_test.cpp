// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "platform/foundation/value.h"

namespace {

using namespace platform;
using namespace std::string_literals;

constexpr auto greatest = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(IntegerValue, ofBooleansIsZeroOrOne) {
    EXPECT_EQ(integerValue(Value(true)), 1);
    EXPECT_EQ(integerValue(Value(false)), 0);
}

TEST(IntegerValue, ofUnsignedIntegersWraps) {
    EXPECT_EQ(integerValue(Value(-7)), -7);
    EXPECT_EQ(integerValue(Value(greatest)), greatest);
    EXPECT_EQ(integerValue(Value(std::uint64_t{1} << 63)), least);
    EXPECT_EQ(integerValue(Value(std::numeric_limits<std::uint64_t>::max())), -1);
}

TEST(IntegerValue, ofRealsIsCutTowardsZero) {
    EXPECT_EQ(integerValue(Value(2.9)), 2);
    EXPECT_EQ(integerValue(Value(-2.9)), -2);
    EXPECT_EQ(integerValue(Value(0.5)), 0);
    EXPECT_EQ(integerValue(Value(-0.0)), 0);
}

TEST(IntegerValue, ofRealsIsHeldToTheRange) {
    EXPECT_EQ(integerValue(Value(9223372036854775808.0)), greatest);
    EXPECT_EQ(integerValue(Value(9223372036854774784.0)), 9223372036854774784);
    EXPECT_EQ(integerValue(Value(-9223372036854775808.0)), least);
    EXPECT_EQ(integerValue(Value(1e300)), greatest);
    EXPECT_EQ(integerValue(Value(-1e300)), least);
    EXPECT_EQ(integerValue(Value(infinity)), greatest);
    EXPECT_EQ(integerValue(Value(-infinity)), least);
    EXPECT_EQ(integerValue(Value(nan)), 0);
}

TEST(IntegerValue, ofStringsIsTheNumberTheyStartWith) {
    EXPECT_EQ(integerValue(Value("12")), 12);
    EXPECT_EQ(integerValue(Value("  -12abc")), -12);
    EXPECT_EQ(integerValue(Value("\t\r\n +7")), 7);
    EXPECT_EQ(integerValue(Value("007")), 7);
    EXPECT_EQ(integerValue(Value("3.9")), 3);
    EXPECT_EQ(integerValue(Value("0x10")), 0);
    EXPECT_EQ(integerValue(Value("5\0005"s)), 5);
    for (const char* text : {"", " ", "+", "-", "abc", "- 5", "--5", "+-5", ".5", "YES",
                             "\xC2\xA0"
                             "5"}) {
        EXPECT_EQ(integerValue(Value(text)), 0) << text;
    }
}

TEST(IntegerValue, ofStringsIsHeldToTheRange) {
    EXPECT_EQ(integerValue(Value("9223372036854775807")), greatest);
    EXPECT_EQ(integerValue(Value("9223372036854775808")), greatest);
    EXPECT_EQ(integerValue(Value("-9223372036854775808")), least);
    EXPECT_EQ(integerValue(Value("-9223372036854775809")), least);
    EXPECT_EQ(integerValue(Value(std::string(1000, '9'))), greatest);
    EXPECT_EQ(integerValue(Value("-" + std::string(1000, '9') + "x")), least);
}

TEST(IntegerValue, ofEverythingElseIsZero) {
    EXPECT_EQ(integerValue(Value()), 0);
    EXPECT_EQ(integerValue(Value(Date{5})), 0);
    EXPECT_EQ(integerValue(Value(Uid{5})), 0);
    EXPECT_EQ(integerValue(Value(Data(5))), 0);
    EXPECT_EQ(integerValue(Value(Array{5})), 0);
    EXPECT_EQ(integerValue(Value(Dictionary{{"5", 5}})), 0);
    EXPECT_EQ(integerValue(Value(Set{{5}})), 0);
    EXPECT_EQ(integerValue(std::optional<Value>()), 0);
    EXPECT_EQ(integerValue(std::optional<Value>(5)), 5);
}

TEST(BoolValue, ofNumbersIsTrueUnlessZero) {
    EXPECT_TRUE(boolValue(Value(true)));
    EXPECT_FALSE(boolValue(Value(false)));
    EXPECT_TRUE(boolValue(Value(-1)));
    EXPECT_TRUE(boolValue(Value(std::uint64_t{1} << 63)));
    EXPECT_FALSE(boolValue(Value(0)));
    EXPECT_TRUE(boolValue(Value(0.1)));
    EXPECT_TRUE(boolValue(Value(infinity)));
    EXPECT_TRUE(boolValue(Value(nan)));
    EXPECT_FALSE(boolValue(Value(0.0)));
    EXPECT_FALSE(boolValue(Value(-0.0)));
}

TEST(BoolValue, ofStringsLooksBehindBlanksSignAndZeros) {
    for (const char* text : {"YES", "yes", "y", "true", "T", "1", "9", "12abc", "  \t\n1", "+1", "-1", "007", "  +0001",
                             "-0Yes", "Yoghurt", "0true"}) {
        EXPECT_TRUE(boolValue(Value(text))) << text;
    }
    for (const char* text : {"", " ", "+", "-", "0", "000", "NO", "no", "false", "F", "abc", "0.5", "- 1", "++1", "0 1",
                             "\xC2\xA0"
                             "1",
                             ".1"}) {
        EXPECT_FALSE(boolValue(Value(text))) << text;
    }
}

TEST(BoolValue, ofEverythingElseIsFalse) {
    EXPECT_FALSE(boolValue(Value()));
    EXPECT_FALSE(boolValue(Value(Date{5})));
    EXPECT_FALSE(boolValue(Value(Uid{5})));
    EXPECT_FALSE(boolValue(Value(Data(5))));
    EXPECT_FALSE(boolValue(Value(Array{5})));
    EXPECT_FALSE(boolValue(Value(Dictionary{{"5", 5}})));
    EXPECT_FALSE(boolValue(Value(Set{{5}})));
    EXPECT_FALSE(boolValue(std::optional<Value>()));
    EXPECT_TRUE(boolValue(std::optional<Value>("YES")));
}

}  // namespace
