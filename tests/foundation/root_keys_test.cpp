// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/property_list.h"
#include "tests/kit/print.h"
#include "tests/property_lists/binary_file.h"

namespace root_keys_test {

namespace {

using namespace platform;
using namespace std::string_literals;

const std::string rootXml =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n<dict>\n\t<key>on</key>\n\t<true/>\n\t<key>count</key>\n\t<integer>3</integer>\n"
    "\t<key>ticks</key>\n\t<dict>\n\t\t<key>com.example.a</key>\n\t\t<true/>\n\t\t<key>on</key>\n\t\t<false/>\n"
    "\t</dict>\n\t<key>list</key>\n\t<array>\n\t\t<dict>\n\t\t\t<key>deep</key>\n\t\t\t<true/>\n\t\t</dict>\n"
    "\t</array>\n</dict>\n</plist>\n";

std::string binaryForm(const std::string& xml) {
    return *writeBinaryPropertyList(*readPropertyList(xml).value).bytes;
}

/// What some keys of a file give; null where there is nothing to read them from.
Value read(std::string_view bytes, std::initializer_list<std::string_view> keys) {
    const std::optional<Dictionary> found = readRootKeys(bytes, {keys.begin(), keys.size()});
    return found ? Value(*found) : Value();
}

class RootKeys : public testing::TestWithParam<std::string> {};

std::string formatName(const testing::TestParamInfo<std::string>& form) {
    return form.index == 0 ? "xml" : "binary";
}

INSTANTIATE_TEST_SUITE_P(Formats, RootKeys, testing::Values(rootXml, binaryForm(rootXml)), formatName);

TEST_P(RootKeys, areReadAndNoOthers) {
    EXPECT_EQ(read(GetParam(), {"list", "deep", "on", "absent", "on"}),
              Value(Dictionary{{"list", Array{Dictionary{{"deep", true}}}}, {"on", true}}));
    EXPECT_EQ(read(GetParam(), {"ticks"}),
              Value(Dictionary{{"ticks", Dictionary{{"com.example.a", true}, {"on", false}}}}));
    EXPECT_EQ(read(GetParam(), {}), Value(Dictionary{}));
}

TEST_P(RootKeys, areNotThoseFurtherIn) {
    EXPECT_EQ(read(GetParam(), {"com.example.a", "deep", "", "On", "o", "onn"}), Value(Dictionary{}));
}

TEST_P(RootKeys, areNotReadFromAFileThatIsCutOffBehindThem) {
    EXPECT_TRUE(read(GetParam().substr(0, GetParam().size() - 20), {"on"}).isNull());
}

TEST(XmlRootKeys, areTheLastOfEqualOnes) {
    EXPECT_EQ(read("<dict><key>a</key><integer>1</integer><key>b</key><true/><key>a</key><array><key>x</key></array>"
                   "</dict>",
                   {"a", "b"}),
              Value(Dictionary{{"a", Array{"x"}}, {"b", true}}));
}

TEST(XmlRootKeys, areComparedDecoded) {
    EXPECT_EQ(read("<dict><key>&lt;&#233;<![CDATA[&]]></key><true/></dict>", {"<é&"}),
              Value(Dictionary{{"<é&", true}}));
    EXPECT_EQ(read("<dict><key>\xEF\xBB\xBFk</key><true/></dict>", {"k"}), Value(Dictionary{{"k", true}}));
    EXPECT_EQ(read("<dict><key/><true/></dict>", {""}), Value(Dictionary{{"", true}}));
    EXPECT_EQ(read("<dict><key>a&#0;</key><true/></dict>", {"a"}), Value(Dictionary{}));
}

TEST(XmlRootKeys, haveValuesBehindCommentsAndPlists) {
    EXPECT_EQ(read("<dict><key>a</key> <!-- c --> <?i?> <plist><string>b</string></plist></dict>", {"a"}),
              Value(Dictionary{{"a", "b"}}));
    EXPECT_EQ(read("<plist><plist><dict><key>a</key><key>b</key></dict></plist></plist>", {"a"}),
              Value(Dictionary{{"a", "b"}}));
}

TEST(XmlRootKeys, areNotInOtherRoots) {
    for (const char* text : {"<array><dict><key>a</key><true/></dict></array>", "<key>a</key>", "<true/>", "<array/>",
                             "<dict><key>CF$UID</key><integer>5</integer></dict>",
                             "<dict><key>CF$UID</key><true/><key>CF$UID</key><real>5</real></dict>"}) {
        EXPECT_TRUE(read(text, {"a", "CF$UID"}).isNull()) << text;
    }
}

TEST(XmlRootKeys, areInADictionaryThatOnlyLooksLikeAUid) {
    EXPECT_EQ(read("<dict><key>CF$UID</key><integer>1</integer><key>CF$UID</key><true/></dict>", {"CF$UID", "a"}),
              Value(Dictionary{{"CF$UID", true}}));
    EXPECT_EQ(read("<dict/>", {"CF$UID"}), Value(Dictionary{}));
}

TEST(XmlRootKeys, areNotReadFromWhatIsMalformedBehindTheValue) {
    for (const char* rest :
         {"<key>b</key></dict>", "<key>b</key><foo/></dict>", "<key>b</key><string>\xFF</string></dict>",
          "<key>b</key><real>x</real></dict>", "<key>b</key><data>\xFF</data></dict>",
          "<key>b</key><date>2020</date></dict>", "<key>\xFF</key><true/></dict>", "text</dict>", ""}) {
        EXPECT_TRUE(read("<dict><key>a</key><true/>" + std::string(rest), {"a"}).isNull()) << rest;
    }
}

TEST(BinaryRootKeys, areTheFirstOfEqualOnes) {
    const BinaryFile file{.objects = {hex("D2 01 02 03 04"), "Qa", hex("61 0061"), hex("09"), hex("08")}};
    EXPECT_EQ(read(file.bytes(), {"a"}), Value(Dictionary{{"a", true}}));
}

TEST(BinaryRootKeys, areComparedDecoded) {
    const auto isFound = [](const std::string& key, std::string_view text) {
        const BinaryFile file{.objects = {hex("D1 01 02"), key, hex("09")}};
        return read(file.bytes(), {text}) == Value(Dictionary{{std::string(text), true}});
    };
    EXPECT_TRUE(isFound("Q\xE9", "é"));
    EXPECT_FALSE(isFound("R\xC3\xA9", "é"));
    EXPECT_TRUE(isFound(hex("61 20AC"), "€"));
    EXPECT_TRUE(isFound(hex("61 D83D"), "\xEF\xBF\xBD"));
    EXPECT_TRUE(isFound("P", ""));
    EXPECT_FALSE(isFound(hex("10 05"), "5"));
}

TEST(BinaryRootKeys, areNotInOtherRoots) {
    for (const char* root : {"A0", "80 05", "00", "09", "51 61", "C0"})
        EXPECT_TRUE(read(binaryFileOf(hex(root)), {"a"}).isNull()) << root;
}

TEST(BinaryRootKeys, areNotReadFromWhatIsMalformedElsewhere) {
    const BinaryFile file{.objects = {hex("D2 01 02 03 04"), "Qa", "Qb", hex("09"), hex("0F")}};
    EXPECT_TRUE(read(file.bytes(), {"a"}).isNull());
}

}  // namespace
}  // namespace root_keys_test
