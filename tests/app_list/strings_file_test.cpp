// SPDX-License-Identifier: MIT
#include "hosts/app_list/strings_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

#include "platform/foundation/property_list.h"

namespace app_list_test {
namespace {

using namespace std::string_literals;
using Strings = std::map<std::string, std::string>;

/// The entries of the file; one of them says so when the file is malformed.
Strings read(std::string_view bytes) {
    const auto dictionary = hosts::readStringsFile(bytes);
    if (!dictionary) return {{"malformed", ""}};
    Strings strings;
    for (const auto& entry : *dictionary) {
        strings[entry.key] = entry.value.string() ? *entry.value.string() : "(no string)";
    }
    return strings;
}

const Strings malformed = {{"malformed", ""}};

std::string utf16(std::string_view ascii, bool bigEndian) {
    std::string bytes;
    for (const char byte : ascii) {
        bytes += bigEndian ? '\0' : byte;
        bytes += bigEndian ? byte : '\0';
    }
    return bytes;
}

TEST(StringsFile, readsPairsOfTheTextForm) {
    EXPECT_EQ(read("\"CFBundleDisplayName\" = \"Tides\";\n\"Other\"=\"1\";"),
              (Strings{{"CFBundleDisplayName", "Tides"}, {"Other", "1"}}));
}

TEST(StringsFile, readsAnEmptyFileAsNoEntries) {
    EXPECT_EQ(read(""), Strings());
    EXPECT_EQ(read(" \n\t/* nothing */ // at all"), Strings());
}

TEST(StringsFile, passesOverCommentsWhereverBlanksMayStand) {
    EXPECT_EQ(read("/* a */\"k\"/**/=// b\n/* c */ \"v\" /* d */ ; // e"), (Strings{{"k", "v"}}));
    EXPECT_EQ(read("/* \"x\" = \"y\"; */ \"k\" = \"v\";"), (Strings{{"k", "v"}}));
    EXPECT_EQ(read("\"k\" = \"/* v */ // v\";"), (Strings{{"k", "/* v */ // v"}}));
}

TEST(StringsFile, readsUnquotedAndSingleQuotedStrings) {
    EXPECT_EQ(read("CFBundleDisplayName = Tides_1.0-b/$x:y; 'a\"b' = 'c';"),
              (Strings{{"CFBundleDisplayName", "Tides_1.0-b/$x:y"}, {"a\"b", "c"}}));
}

TEST(StringsFile, takesAKeyWithoutAValueForItself) {
    EXPECT_EQ(read("\"Tides\";"), (Strings{{"Tides", "Tides"}}));
}

TEST(StringsFile, readsEntriesInBraces) {
    EXPECT_EQ(read("{ \"k\" = \"v\"; }"), (Strings{{"k", "v"}}));
    EXPECT_EQ(read("{}"), Strings());
}

TEST(StringsFile, letsTheLastOfTwoEntriesCount) {
    EXPECT_EQ(read("\"k\" = \"first\"; \"k\" = \"last\";"), (Strings{{"k", "last"}}));
}

TEST(StringsFile, keepsLineBreaksWithinAString) {
    EXPECT_EQ(read("\"k\" = \"one\ntwo\";"), (Strings{{"k", "one\ntwo"}}));
}

TEST(StringsFile, readsEscapes) {
    EXPECT_EQ(read(R"("k" = "\"\\\n\r\t\a\b\f\v\'\q";)"), (Strings{{"k", "\"\\\n\r\t\a\b\f\v'q"}}));
    EXPECT_EQ(read(R"("k" = "\101\7\0601";)"), (Strings{{"k", "A\a01"}}));
}

TEST(StringsFile, readsEscapedCodePoints) {
    EXPECT_EQ(read(R"("k" = "\U00e9\u00E9\U41z";)"), (Strings{{"k", "ééAz"}}));
    EXPECT_EQ(read(R"("k" = "\Ud83c\Udf0a";)"), (Strings{{"k", "🌊"}}));
}

TEST(StringsFile, readsHalfASurrogatePairAsTheReplacementCharacter) {
    EXPECT_EQ(read(R"("k" = "\Ud83c";)"), (Strings{{"k", "\uFFFD"}}));
    EXPECT_EQ(read(R"("k" = "\Ud83c\U0041";)"), (Strings{{"k", "\uFFFDA"}}));
    EXPECT_EQ(read(R"("k" = "\Udf0a";)"), (Strings{{"k", "\uFFFD"}}));
}

TEST(StringsFile, readsUtf8WithAndWithoutAMark) {
    EXPECT_EQ(read("\"k\" = \"潮\";"), (Strings{{"k", "潮"}}));
    EXPECT_EQ(read("\xEF\xBB\xBF\"k\" = \"潮\";"), (Strings{{"k", "潮"}}));
}

TEST(StringsFile, readsUtf16OfBothByteOrdersWithAndWithoutAMark) {
    for (const bool bigEndian : {false, true}) {
        const std::string text = utf16("\"k\" = \"v\";", bigEndian);
        EXPECT_EQ(read(text), (Strings{{"k", "v"}}));
        EXPECT_EQ(read((bigEndian ? "\xFE\xFF" : "\xFF\xFE") + text), (Strings{{"k", "v"}}));
    }
}

TEST(StringsFile, readsUtf16BeyondTheBasicPlane) {
    const std::string wave = "\x3C\xD8\x0A\xDF"s;
    EXPECT_EQ(read("\xFF\xFE" + utf16("k=\"", false) + wave + utf16("\";", false)), (Strings{{"k", "🌊"}}));
}

TEST(StringsFile, readsPropertyListsOfBothEncodings) {
    const platform::Value dictionary(platform::Dictionary{{"k", "v"}, {"n", 1}});
    EXPECT_EQ(read(*platform::writeXmlPropertyList(dictionary).bytes), (Strings{{"k", "v"}, {"n", "(no string)"}}));
    EXPECT_EQ(read(*platform::writeBinaryPropertyList(dictionary).bytes), (Strings{{"k", "v"}, {"n", "(no string)"}}));
}

TEST(StringsFile, refusesAPropertyListThatIsNoDictionary) {
    EXPECT_EQ(read(*platform::writeXmlPropertyList(platform::Value("text")).bytes), malformed);
}

TEST(StringsFile, refusesWhatIsMalformedAnywhere) {
    for (const char* text : {
             "\"k\" = \"v\"",             // no semicolon
             "\"k\" = ;",                 // no value
             "\"k\" \"v\";",              // no equals sign
             "= \"v\";",                  // no key
             "\"k\" = \"v;",              // no end of the string
             "\"k\" = \"v\\",             // no end of the escape
             "\"k\" = \"v\"; /* open",    // no end of the comment
             "/* open",                   // likewise
             "{ \"k\" = \"v\";",          // no closing brace
             "\"k\" = \"v\"; }",          // no opening brace
             "{ \"k\" = \"v\"; } \"l\"",  // more after the end
             "\"k\" = ( \"v\" );",        // a list
             "\"k\" = { \"l\" = 1; };",   // a dictionary
             "<html></html>",
         }) {
        EXPECT_EQ(read(text), malformed) << text;
    }
}

TEST(StringsFile, refusesBytesThatAreNoText) {
    EXPECT_EQ(read("\"k\" = \"\xFF\xC0\";"), malformed);
    EXPECT_EQ(read("\xFF\xFE\"\0k"s), malformed);
    EXPECT_EQ(read("\"k\" = \"v\";\0"s), malformed);
}

TEST(StringsFile, readsAFileWithoutAnyEndInLinearTime) {
    constexpr std::size_t length = std::size_t{1} << 20;
    EXPECT_EQ(read(std::string(length, '"')), malformed);
    EXPECT_EQ(read(std::string(length, '/')), Strings());
    EXPECT_EQ(read(std::string(length, '{')), malformed);
    std::string openComments;
    while (openComments.size() < length)
        openComments += "/*";
    EXPECT_EQ(read(openComments), malformed);
}

}  // namespace
}  // namespace app_list_test
