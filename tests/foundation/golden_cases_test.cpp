// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <stdexcept>

#include "platform/foundation/property_list.h"
#include "tests/kit/print.h"
#include "tests/property_lists/golden_cases.h"

namespace golden {

void PrintTo(const Case& golden, std::ostream* stream) {
    *stream << golden.name;
}

}  // namespace golden

namespace {

using golden::Case;
using namespace platform;

std::string kindOf(const Value& value) {
    if (value.isNull()) return "null";
    if (value.boolean()) return "boolean";
    if (value.integer()) return "integer";
    if (value.real()) return "real";
    if (value.string()) return "string";
    if (value.date()) return "date";
    if (value.uid()) return "uid";
    if (value.data()) return "data";
    if (value.array()) return "array";
    if (value.set()) return "set";
    return "dict";
}

std::string testName(const testing::TestParamInfo<Case>& info) {
    std::string name = info.param.name;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char letter) { return !std::isalnum(letter); }, '_');
    return name;
}

std::vector<Case> casesWhere(bool (*condition)(const Case&)) {
    std::vector<Case> found;
    for (const Case& golden : golden::cases()) {
        if (condition(golden)) found.push_back(golden);
    }
    return found;
}

class RejectedCase : public testing::TestWithParam<Case> {};

TEST_P(RejectedCase, isRejectedWithAReason) {
    const std::string bytes = golden::input(GetParam());
    const PropertyListReading reading = readPropertyList(bytes);
    ASSERT_FALSE(reading) << *reading.value;
    EXPECT_FALSE(reading.error.reason.empty());
    EXPECT_LE(reading.error.offset, bytes.size());
    EXPECT_EQ(reading.error.line > 0, reading.format == PropertyListFormat::xml);
    EXPECT_FALSE(readRootKeys(bytes, {}));
}

INSTANTIATE_TEST_SUITE_P(Golden, RejectedCase,
                         testing::ValuesIn(casesWhere([](const Case& golden) { return golden.isRejected(); })),
                         testName);

class AcceptedCase : public testing::TestWithParam<Case> {};

void expectWrittenByteForByte(const Case& golden, const Value& value) {
    const PropertyListWriting writing = writeXmlPropertyList(value);
    ASSERT_TRUE(writing) << writing.reason;
    EXPECT_EQ(*writing.bytes, golden::fileContent(golden.name + ".expected.xml"));
}

void expectRefusedByXml(const Value& value) {
    const PropertyListWriting writing = writeXmlPropertyList(value);
    EXPECT_FALSE(writing);
    EXPECT_FALSE(writing.reason.empty());
}

void expectSameFromBinaryFormat(const Value& value) {
    const PropertyListWriting writing = writeBinaryPropertyList(value);
    ASSERT_TRUE(writing) << writing.reason;
    const PropertyListReading again = readPropertyList(*writing.bytes);
    ASSERT_TRUE(again) << again.error.reason;
    EXPECT_TRUE(*again.value == value);
}

TEST_P(AcceptedCase, isReadAndWrittenAsByThePlatform) {
    const Case& golden = GetParam();
    const PropertyListReading reading = readPropertyList(golden::input(golden));
    ASSERT_TRUE(reading) << reading.error.reason;
    EXPECT_EQ(kindOf(*reading.value), golden.root);
    EXPECT_EQ(reading.format == PropertyListFormat::xml ? "xml" : "binary", golden.format);
    if (golden.isWritable()) {
        expectWrittenByteForByte(golden, *reading.value);
    } else {
        expectRefusedByXml(*reading.value);
    }
    expectSameFromBinaryFormat(*reading.value);
}

INSTANTIATE_TEST_SUITE_P(Golden, AcceptedCase,
                         testing::ValuesIn(casesWhere([](const Case& golden) { return !golden.isRejected(); })),
                         testName);

}  // namespace
