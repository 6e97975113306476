// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/foundation/property_list.h"
#include "tests/property_lists/binary_file.h"

namespace {

using namespace platform;
using testing::HasSubstr;

PropertyListError errorOf(const std::string& bytes) {
    const PropertyListReading reading = readPropertyList(bytes);
    EXPECT_FALSE(reading);
    return reading.error;
}

TEST(PropertyListErrors, saysWhereXmlIsMalformed) {
    const PropertyListError error = errorOf("<dict>\n\t<key>a</key>\n\t<foo/>\n</dict>");
    EXPECT_EQ(error.reason, "unknown tag <foo/>");
    EXPECT_EQ(error.offset, 22u);
    EXPECT_EQ(error.line, 3u);
    EXPECT_EQ(error.column, 2u);
}

TEST(PropertyListErrors, countsLinesHoweverTheyEnd) {
    for (const char* newline : {"\n", "\r", "\r\n"}) {
        const PropertyListError error = errorOf("<array>" + std::string(newline) + newline + "  x");
        EXPECT_EQ(error.line, 3u);
        EXPECT_EQ(error.column, 3u);
    }
}

TEST(PropertyListErrors, countsBytesOfTheFileWhateverItsEncoding) {
    const PropertyListError utf8 = errorOf("\xEF\xBB\xBF<array>é\n");
    EXPECT_EQ(utf8.offset, 10u);
    const std::string text = "<array>\n<x/>";
    std::string utf16 = "\xFF\xFE";
    for (const char character : text)
        utf16 += {character, '\0'};
    const PropertyListError error = errorOf(utf16);
    EXPECT_EQ(error.offset, 2u + 16u);
    EXPECT_EQ(error.line, 2u);
    EXPECT_EQ(error.column, 1u);
    const PropertyListError latin =
        errorOf("<?xml version='1.0' encoding='ISO-8859-1'?>\n<string>\xE9\xE9<x/></string>");
    EXPECT_EQ(latin.offset, 44u + 8u + 2u);
    EXPECT_EQ(latin.line, 2u);
    EXPECT_EQ(latin.column, 11u);
}

TEST(PropertyListErrors, saysWhereBytesStandForNoCharacter) {
    const PropertyListError error = errorOf("<?xml encoding='windows-1252'?>\n<string>\x81</string>");
    EXPECT_EQ(error.line, 2u);
    EXPECT_EQ(error.column, 9u);
    EXPECT_THAT(error.reason, HasSubstr("encoding"));
}

TEST(PropertyListErrors, saysWhichByteIsNoUtf8) {
    EXPECT_EQ(errorOf("<string>abc\xFF</string>").offset, 11u);
}

TEST(PropertyListErrors, saysWhatIsWrong) {
    EXPECT_THAT(errorOf("<dict><key>a</key></dict>").reason, HasSubstr("key without a value"));
    EXPECT_THAT(errorOf("<dict><true/></dict>").reason, HasSubstr("value without a key"));
    EXPECT_THAT(errorOf("<string>a</key>").reason, HasSubstr("</string>"));
    EXPECT_THAT(errorOf("<string>&nbsp;</string>").reason, HasSubstr("reference"));
    EXPECT_THAT(errorOf("<integer>x</integer>").reason, HasSubstr("<integer>"));
    EXPECT_THAT(errorOf("{\"a\": 1}").reason, HasSubstr("no XML property list"));
    EXPECT_THAT(errorOf("<!DOCTYPE plist []><dict/>").reason, HasSubstr("internal subset"));
    EXPECT_THAT(errorOf("<?xml encoding='x'?><dict/>").reason, HasSubstr("encoding"));
    EXPECT_THAT(errorOf("<array>").reason, HasSubstr("ends"));
    EXPECT_THAT(errorOf("").reason, HasSubstr("no element"));
}

TEST(PropertyListErrors, showsOddTagsInPrintableForm) {
    EXPECT_EQ(errorOf("<\x01\xFFx>").reason, "unknown tag <??x>");
    EXPECT_LT(errorOf("<" + std::string(100000, 'x') + ">").reason.size(), 100u);
}

TEST(PropertyListErrors, saysWhichBinaryObjectIsMalformed) {
    const PropertyListReading reading = readPropertyList(binaryDictionaryOf(hex("84 0100000000")));
    EXPECT_EQ(reading.format, PropertyListFormat::binary);
    EXPECT_EQ(reading.error.reason, "a UID of more than 32 bits (object 2)");
    EXPECT_EQ(reading.error.offset, 13u);
    EXPECT_EQ(reading.error.line, 0u);
    EXPECT_EQ(reading.error.column, 0u);
}

TEST(PropertyListErrors, saysWhichPartOfTheTrailerIsMalformed) {
    std::string bytes = binaryFileOf(hex("09"));
    bytes[bytes.size() - 32 + 6] = '\0';
    EXPECT_EQ(errorOf(bytes).offset, bytes.size() - 32 + 6);
    EXPECT_THAT(errorOf(bytes).reason, HasSubstr("offset size"));
}

}  // namespace
