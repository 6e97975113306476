// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "allocation_meter.h"
#include "platform/foundation/property_list.h"
#include "tests/kit/print.h"
#include "tests/property_lists/binary_file.h"

namespace {

using namespace platform;
using namespace std::string_literals;
using Verdict = PropertyListLookup::Verdict;
using NestedVerdict = PropertyListNestedLookup::Verdict;

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

class KeyLookup : public testing::TestWithParam<std::string> {};

std::string formatName(const testing::TestParamInfo<std::string>& form) {
    return form.index == 0 ? "xml" : "binary";
}

INSTANTIATE_TEST_SUITE_P(Formats, KeyLookup, testing::Values(rootXml, binaryForm(rootXml)), formatName);

TEST_P(KeyLookup, findsTheValueOfARootKey) {
    EXPECT_EQ(lookUpRootKey(GetParam(), "on").value, Value(true));
    EXPECT_EQ(lookUpRootKey(GetParam(), "count").value, Value(3));
    EXPECT_EQ(lookUpRootKey(GetParam(), "ticks").value, Value(Dictionary{{"com.example.a", true}, {"on", false}}));
    EXPECT_EQ(lookUpRootKey(GetParam(), "list").value, Value(Array{Dictionary{{"deep", true}}}));
}

TEST_P(KeyLookup, leavesKeysFurtherInAlone) {
    for (const char* key : {"com.example.a", "deep", "", "On", "o", "onn"}) {
        const PropertyListLookup lookup = lookUpRootKey(GetParam(), key);
        EXPECT_EQ(lookup.verdict, Verdict::absent) << key;
        EXPECT_FALSE(lookup.value);
    }
}

TEST_P(KeyLookup, findsScalarsWithoutAllocating) {
    const AllocationMeter meter;
    const PropertyListLookup lookup = lookUpRootKey(GetParam(), "on");
    EXPECT_EQ(meter.allocations(), 0u);
    EXPECT_EQ(lookup.verdict, Verdict::found);
}

TEST_P(KeyLookup, findsNestedKeys) {
    EXPECT_EQ(lookUpNestedKey(GetParam(), "ticks", "com.example.a").value, Value(true));
    EXPECT_EQ(lookUpNestedKey(GetParam(), "ticks", "on").value, Value(false));
    EXPECT_EQ(lookUpNestedKey(GetParam(), "ticks", "count").verdict, NestedVerdict::innerAbsent);
    EXPECT_EQ(lookUpNestedKey(GetParam(), "tick", "on").verdict, NestedVerdict::outerAbsent);
    EXPECT_EQ(lookUpNestedKey(GetParam(), "on", "on").verdict, NestedVerdict::outerNoDictionary);
    EXPECT_EQ(lookUpNestedKey(GetParam(), "list", "deep").verdict, NestedVerdict::outerNoDictionary);
}

TEST_P(KeyLookup, readsSomeRootKeysAndNoOthers) {
    constexpr std::string_view keys[] = {"list", "deep", "on", "absent", "on"};
    const std::optional<Dictionary> read = readRootKeys(GetParam(), keys);
    ASSERT_TRUE(read);
    EXPECT_EQ(Value(*read), Value(Dictionary{{"list", Array{Dictionary{{"deep", true}}}}, {"on", true}}));
    EXPECT_EQ(Value(*readRootKeys(GetParam(), {})), Value(Dictionary{}));
}

TEST_P(KeyLookup, readsNoKeysOfAFileThatIsCutOffBehindThem) {
    constexpr std::string_view keys[] = {"on"};
    EXPECT_FALSE(readRootKeys(GetParam().substr(0, GetParam().size() - 20), keys));
}

TEST(SomeKeysLookup, seesNoDictionaryInOtherRoots) {
    constexpr std::string_view keys[] = {"a"};
    EXPECT_FALSE(readRootKeys("<array/>", keys));
    EXPECT_FALSE(readRootKeys("<dict><key>CF$UID</key><integer>5</integer></dict>", keys));
    EXPECT_FALSE(readRootKeys(binaryFileOf(hex("A0")), keys));
}

TEST(NestedKeyLookup, seesNoDictionaryInOtherRoots) {
    EXPECT_EQ(lookUpNestedKey("<array/>", "a", "b").verdict, NestedVerdict::noDictionary);
    EXPECT_EQ(lookUpNestedKey(binaryFileOf(hex("A0")), "a", "b").verdict, NestedVerdict::noDictionary);
}

TEST_P(KeyLookup, findsNestedScalarsWithoutAllocating) {
    const AllocationMeter meter;
    const PropertyListNestedLookup lookup = lookUpNestedKey(GetParam(), "ticks", "com.example.a");
    EXPECT_EQ(meter.allocations(), 0u);
    EXPECT_EQ(lookup.verdict, NestedVerdict::found);
}

TEST_P(KeyLookup, rejectsAFileThatIsCutOffBehindTheValue) {
    const std::string cut = GetParam().substr(0, GetParam().size() - 20);
    EXPECT_EQ(lookUpRootKey(cut, "on").verdict, Verdict::malformed);
    EXPECT_EQ(lookUpNestedKey(cut, "ticks", "on").verdict, NestedVerdict::malformed);
}

TEST(XmlKeyLookup, takesTheLastOfEqualKeys) {
    const std::string text =
        "<dict><key>a</key><integer>1</integer><key>b</key><true/><key>a</key><array><key>x</key></array></dict>";
    EXPECT_EQ(lookUpRootKey(text, "a").value, Value(Array{"x"}));
    constexpr std::string_view keys[] = {"a", "b"};
    EXPECT_EQ(Value(*readRootKeys(text, keys)), Value(Dictionary{{"a", Array{"x"}}, {"b", true}}));
}

TEST(XmlKeyLookup, looksForNestedKeysInTheLastOfEqualDictionaries) {
    const auto file = [](const std::string& last) {
        return "<dict><key>a</key><dict><key>x</key><true/></dict><key>b</key><dict><key>x</key><integer>2</integer></"
               "dict>"
               "<key>a</key>" +
               last + "</dict>";
    };
    EXPECT_EQ(lookUpNestedKey(file("<dict><key>x</key><integer>3</integer></dict>"), "a", "x").value, Value(3));
    EXPECT_EQ(lookUpNestedKey(file("<dict><key>y</key><true/></dict>"), "a", "x").verdict, NestedVerdict::innerAbsent);
    EXPECT_EQ(lookUpNestedKey(file("<dict/>"), "a", "x").verdict, NestedVerdict::innerAbsent);
    EXPECT_EQ(lookUpNestedKey(file("<true/>"), "a", "x").verdict, NestedVerdict::outerNoDictionary);
    EXPECT_EQ(lookUpNestedKey(file("<array><dict><key>x</key><true/></dict></array>"), "a", "x").verdict,
              NestedVerdict::outerNoDictionary);
}

TEST(XmlKeyLookup, comparesDecodedKeys) {
    EXPECT_EQ(lookUpRootKey("<dict><key>&lt;&#233;<![CDATA[&]]></key><true/></dict>", "<é&").value, Value(true));
    EXPECT_EQ(lookUpRootKey("<dict><key>\xEF\xBB\xBFk</key><true/></dict>", "k").value, Value(true));
    EXPECT_EQ(lookUpRootKey("<dict><key/><true/></dict>", "").value, Value(true));
    EXPECT_EQ(lookUpRootKey("<dict><key>a&#0;</key><true/></dict>", "a\0"s).value, Value(true));
    EXPECT_EQ(lookUpRootKey("<dict><key>a&#0;</key><true/></dict>", "a").verdict, Verdict::absent);
}

TEST(XmlKeyLookup, readsValuesBehindCommentsAndPlists) {
    EXPECT_EQ(lookUpRootKey("<dict><key>a</key> <!-- c --> <?i?> <plist><string>b</string></plist></dict>", "a").value,
              Value("b"));
    EXPECT_EQ(lookUpRootKey("<plist><plist><dict><key>a</key><key>b</key></dict></plist></plist>", "a").value,
              Value("b"));
}

TEST(XmlKeyLookup, seesNoDictionaryInOtherRoots) {
    for (const char* text : {"<array><dict><key>a</key><true/></dict></array>", "<key>a</key>", "<true/>", "<array/>",
                             "<dict><key>CF$UID</key><integer>5</integer></dict>",
                             "<dict><key>CF$UID</key><true/><key>CF$UID</key><real>5</real></dict>"}) {
        EXPECT_EQ(lookUpRootKey(text, "a").verdict, Verdict::noDictionary) << text;
        EXPECT_EQ(lookUpRootKey(text, "CF$UID").verdict, Verdict::noDictionary) << text;
    }
}

TEST(XmlKeyLookup, seesADictionaryThatOnlyLooksLikeAUid) {
    const std::string text = "<dict><key>CF$UID</key><integer>1</integer><key>CF$UID</key><true/></dict>";
    EXPECT_EQ(lookUpRootKey(text, "CF$UID").value, Value(true));
    EXPECT_EQ(lookUpRootKey(text, "a").verdict, Verdict::absent);
    EXPECT_EQ(lookUpRootKey("<dict/>", "CF$UID").verdict, Verdict::absent);
}

TEST(XmlKeyLookup, seesNoDictionaryInANestedUid) {
    EXPECT_EQ(
        lookUpNestedKey("<dict><key>a</key><dict><key>CF$UID</key><integer>5</integer></dict></dict>", "a", "CF$UID")
            .verdict,
        NestedVerdict::outerNoDictionary);
}

TEST(XmlKeyLookup, rejectsWhatIsMalformedBehindTheValue) {
    for (const char* rest :
         {"<key>b</key></dict>", "<key>b</key><foo/></dict>", "<key>b</key><string>\xFF</string></dict>",
          "<key>b</key><real>x</real></dict>", "<key>b</key><data>\xFF</data></dict>",
          "<key>b</key><date>2020</date></dict>", "<key>\xFF</key><true/></dict>", "text</dict>", ""}) {
        EXPECT_EQ(lookUpRootKey("<dict><key>a</key><true/>" + std::string(rest), "a").verdict, Verdict::malformed)
            << rest;
    }
}

TEST(BinaryKeyLookup, takesTheFirstOfEqualKeys) {
    const BinaryFile file{.objects = {hex("D2 01 02 03 04"), "Qa", hex("61 0061"), hex("09"), hex("08")}};
    EXPECT_EQ(lookUpRootKey(file.bytes(), "a").value, Value(true));
    constexpr std::string_view keys[] = {"a"};
    EXPECT_EQ(Value(*readRootKeys(file.bytes(), keys)), Value(Dictionary{{"a", true}}));
}

TEST(BinaryKeyLookup, comparesDecodedKeys) {
    const auto keyed = [](const std::string& key) {
        return BinaryFile{.objects = {hex("D1 01 02"), key, hex("09")}}.bytes();
    };
    EXPECT_EQ(lookUpRootKey(keyed("Q\xE9"), "é").value, Value(true));
    EXPECT_EQ(lookUpRootKey(keyed("R\xC3\xA9"), "é").verdict, Verdict::absent);
    EXPECT_EQ(lookUpRootKey(keyed(hex("61 20AC")), "€").value, Value(true));
    EXPECT_EQ(lookUpRootKey(keyed(hex("61 D83D")), "\xEF\xBF\xBD").value, Value(true));
    EXPECT_EQ(lookUpRootKey(keyed("P"), "").value, Value(true));
    EXPECT_EQ(lookUpRootKey(keyed(hex("10 05")), "5").verdict, Verdict::absent);
}

TEST(BinaryKeyLookup, seesNoDictionaryInOtherRoots) {
    for (const char* root : {"A0", "80 05", "00", "09", "51 61", "C0"}) {
        EXPECT_EQ(lookUpRootKey(binaryFileOf(hex(root)), "a").verdict, Verdict::noDictionary) << root;
    }
}

TEST(BinaryKeyLookup, rejectsWhatIsMalformedElsewhere) {
    const BinaryFile file{.objects = {hex("D2 01 02 03 04"), "Qa", "Qb", hex("09"), hex("0F")}};
    EXPECT_EQ(lookUpRootKey(file.bytes(), "a").verdict, Verdict::malformed);
}

}  // namespace
