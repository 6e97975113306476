// SPDX-License-Identifier: MIT
// The comparison that the fuzz targets make: that it is made at all, that it can fail, and that what it
// excuses is needed and no more than that.
#include "tests/property_lists/libplist_agreement.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "tests/property_lists/binary_file.h"
#include "tests/property_lists/golden_cases.h"
#include "tests/property_lists/libplist_peer.h"
#include "tests/property_lists/random_value.h"

namespace {

using namespace platform;
using peers::Agreement;
using peers::compareWithLibplist;
using Verdict = Agreement::Verdict;
using namespace std::string_literals;

Agreement compared(const std::string& bytes) {
    return compareWithLibplist(bytes, readPropertyList(bytes));
}

std::string inDictionary(const std::string& element) {
    return "<plist version=\"1.0\"><dict><key>k</key>" + element + "</dict></plist>";
}

TEST(LibplistAgreement, isFoundInMostGoldenCasesThatCanBeRead) {
    std::map<Verdict, std::size_t> counts;
    for (const golden::Case& golden : golden::cases()) {
        if (!golden.isRejected()) ++counts[compared(golden::input(golden)).verdict];
    }
    const std::size_t withNull = peers::libplistHasNull ? 3 : 0;
    EXPECT_EQ(counts[Verdict::agreed], 118u + withNull);
    EXPECT_EQ(counts[Verdict::excused], 10u);
    EXPECT_EQ(counts[Verdict::notCompared], 9u - withNull);
    EXPECT_EQ(counts[Verdict::differed], 0u);
}

TEST(LibplistAgreement, isFoundWithoutAnyExcuseInWhatOursWrites) {
    RandomValues values(6, RandomValues::Kinds::thoseOfXml);
    for (int count = 0; count < 1000; ++count) {
        const Value value = values.next();
        EXPECT_EQ(compared(*writeXmlPropertyList(value).bytes).verdict, Verdict::agreed);
        EXPECT_EQ(compared(*writeBinaryPropertyList(value).bytes).verdict, Verdict::agreed);
    }
}

/// A wrong reading of each kind of value.
TEST(LibplistAgreement, isNotFoundWhereOursReadsSomethingElse) {
    const std::pair<const char*, Value> misreadings[] = {
        {"<true/>", false},
        {"<integer>7</integer>", 8},
        {"<integer>-1</integer>", UINT64_MAX},
        {"<integer>7</integer>", 7.0},
        {"<real>0.5</real>", 0.25},
        {"<real>0</real>", -0.0},
        {"<string>a</string>", "b"},
        {"<string></string>", Array{}},
        {"<data>YWI=</data>", Data{std::byte{'a'}}},
        {"<date>2020-01-01T00:00:00Z</date>", Date{1}},
        {"<array><true/></array>", Array{}},
        {"<array/>", Dictionary{}},
        {"<dict><key>a</key><true/></dict>", Dictionary{{"b", true}}},
        {"<dict><key>a</key><true/></dict>", Dictionary{{"a", true}, {"b", true}}},
        {"<dict><key>CF$UID</key><integer>5</integer></dict>", Uid{6}},
    };
    for (const auto& [element, wrong] : misreadings) {
        const PropertyListReading reading{Dictionary{{"k", wrong}}, PropertyListFormat::xml, {}};
        EXPECT_EQ(compareWithLibplist(inDictionary(element), reading).verdict, Verdict::differed) << element;
    }
}

/// A document for each excuse. In all of them ours and libplist's readings really differ.
const std::string excusedDocuments[] = {
    inDictionary("<string>a\0b</string>"s),
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + inDictionary("<string>\xE9</string>"),
    inDictionary("<string a=\"1>2\">a</string>"),
    inDictionary("<integer>010</integer>"),
    inDictionary("<string>\xEF\xBB\xBF</string>"),
    inDictionary("<data>AwoRGB=mb,XQ=</data>"),
    inDictionary("<date>2020-13-01T00:00:00Z</date>"),
    inDictionary("<date>9999-01-01T00:00:00Z</date>"),
    binaryFileOf(hex("33 BFF8000000000000")),
    binaryFileOf(hex("51 E9")),
    binaryFileOf(hex("62 0061 D800")),
    binaryFileOf(hex("C0")),
    BinaryFile{.objects = {hex("D2 01 02 03 04"), hex("50"), hex("61 D800"), hex("08"), hex("09")}}.bytes(),
    BinaryFile{.objects = {hex("D2 01 02 03 04"), hex("51 E9"), hex("61 00E9"), hex("08"), hex("09")}}.bytes(),
    binaryFileOf(hex("63 D800 0061 DC00")),
    "\n\n<dict/><key>#k</key><real/>",
};

TEST(LibplistAgreement, needsEachOfItsExcuses) {
    std::set<std::string_view> met;
    for (const std::string& document : excusedDocuments) {
        const Agreement agreement = compared(document);
        EXPECT_EQ(agreement.verdict, Verdict::excused) << testing::PrintToString(document);
        EXPECT_TRUE(met.insert(agreement.excuse).second) << agreement.excuse;
    }
    EXPECT_EQ(met.size(), peers::excuseCount());
}

/// In the Latin-1 of two keys that are bytes of UTF-8 elsewhere, each has its own counterpart.
TEST(LibplistAgreement, looksForEachKeyAmongAllThatItMayStandFor) {
    const BinaryFile file{.objects = {hex("D2 01 02 03 04"), hex("51 E9"), hex("52 C3A9"), hex("08"), hex("09")}};
    EXPECT_EQ(compared(file.bytes()).verdict, Verdict::excused);
    PropertyListReading swapped = readPropertyList(file.bytes());
    swapped.value = Dictionary{{"\xC3\xA9", true}, {"\xC3\x83\xC2\xA9", false}};
    EXPECT_EQ(compareWithLibplist(file.bytes(), swapped).verdict, Verdict::differed);
}

TEST(LibplistAgreement, excusesEachFormOfWhatFollowsAnEmptyRoot) {
    for (const std::string document :
         {"<array/><!DOCTYPE p\xEC<t><key/>", "<plist><array/></plist><false/>", "<dict/><key>k</key><true/>"}) {
        EXPECT_EQ(compared(document).verdict, Verdict::excused) << document;
    }
    const PropertyListReading wrong{Array{}, PropertyListFormat::xml, {}};
    EXPECT_EQ(compareWithLibplist("<array><true/></array>", wrong).verdict, Verdict::differed);
}

/// Nothing else in such a document may be wrong with it.
TEST(LibplistAgreement, isNotExcusedByADifferenceElsewhereInTheValue) {
    const std::string document = inDictionary("<date>9999-01-01T00:00:00Z</date><key>l</key><integer>1</integer>");
    PropertyListReading reading = readPropertyList(document);
    Dictionary wrong = *reading.value->dictionary();
    wrong.set("l", 2);
    reading.value = wrong;
    EXPECT_EQ(compareWithLibplist(document, reading).verdict, Verdict::differed);
}

}  // namespace
