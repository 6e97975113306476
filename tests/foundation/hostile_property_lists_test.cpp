// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "allocation_meter.h"
#include "platform/foundation/property_list.h"
#include "tests/property_lists/binary_file.h"

namespace hostile_property_lists_test {

namespace {

using namespace platform;
using namespace std::string_literals;

std::string repeated(std::size_t count, const std::string& piece) {
    std::string text;
    text.reserve(count * piece.size());
    for (std::size_t index = 0; index < count; ++index)
        text += piece;
    return text;
}

/// A binary file of arbitrary body bytes, with an object beginning at each of some offsets.
std::string laidOut(const std::string& body, std::vector<std::size_t> offsets, std::size_t referenceSize) {
    BinaryFile file{.objects = {body}};
    file.offsets = std::move(offsets);
    file.offsetSize = 4;
    file.referenceSize = referenceSize;
    return file.bytes();
}

constexpr std::string_view keys[] = {"a"};

/// Reading, in whole and in part, comparing and writing must all come to an end, within some memory for each
/// byte of the file.
void expectModest(const std::string& bytes, std::size_t bytesPerByte) {
    const AllocationMeter meter;
    {
        const PropertyListReading reading = readPropertyList(bytes);
        readRootKeys(bytes, keys);
        if (reading) {
            EXPECT_TRUE(*reading.value == *readPropertyList(bytes).value);
            writeBinaryPropertyList(*reading.value);
        }
    }
    EXPECT_LT(meter.peakBytes(), bytesPerByte * bytes.size() + (std::size_t{1} << 20));
}

TEST(HostilePropertyList, nestedBeyondAnyDepthIsRejected) {
    for (const char* opening : {"<array>", "<dict><key>a</key>", "<plist>", "<plist><array>", "<array><plist>"}) {
        const std::string bytes = repeated(200000, opening);
        EXPECT_FALSE(readPropertyList(bytes));
        EXPECT_FALSE(readRootKeys(bytes, keys));
    }
}

TEST(HostilePropertyList, ofPlistsInPlistsIsReadToSomeDepth) {
    EXPECT_TRUE(readPropertyList(repeated(100, "<plist>") + "<true/>" + repeated(100, "</plist>")));
    EXPECT_TRUE(readPropertyList(repeated(512, "<array>") + "<true/>" + repeated(512, "</array>")));
}

TEST(HostilePropertyList, ofManyContainersTakesMemoryInProportion) {
    expectModest("<array>" + repeated(20000, "<dict><key/><true/></dict>") + "</array>", 100);
    expectModest("<array>" + repeated(50000, "<array/>") + "</array>", 100);
    expectModest("<dict>" + repeated(20000, "<key>a</key><true/>") + "</dict>", 100);
    expectModest("<array>" + repeated(50000, "<string/>") + "</array>", 100);
}

TEST(HostilePropertyList, ofOneLongTextIsReadInProportion) {
    expectModest("<string>" + std::string(1 << 20, 'x') + "</string>", 10);
    expectModest("<string>" + repeated(1 << 18, "&lt;") + "</string>", 10);
    expectModest("<string>" + repeated(1 << 17, "<![CDATA[]]>") + "</string>", 10);
    expectModest("<data>" + std::string(1 << 20, 'A') + "</data>", 10);
    expectModest("<data>" + std::string(1 << 20, '-') + "</data>", 10);
    expectModest("<real>" + std::string(1 << 20, '1') + "</real>", 10);
    expectModest("<integer>" + std::string(1 << 20, '0') + "</integer>", 10);
    expectModest("<!--" + std::string(1 << 20, '-'), 10);
    expectModest("<" + std::string(1 << 20, 'x'), 10);
    expectModest(std::string(1 << 20, '<'), 10);
    expectModest("<array>" + repeated(1 << 18, "<!-- -->") + "</array>", 10);
    expectModest("<!DOCTYPE " + std::string(1 << 20, 'x'), 10);
    expectModest("<?xml " + repeated(1 << 17, "encoding"), 10);
}

TEST(HostilePropertyList, thatDeclaresMoreThanItHasAllocatesNothingForIt) {
    for (const char* object : {"AF 13 0000000100000000 00", "DF 13 0000000100000000 00", "4F 13 0000000100000000 00",
                               "5F 13 0000000100000000 00", "6F 13 0000000100000000 00", "CF 13 0000000100000000 00"}) {
        expectModest(binaryFileOf(hex(object)), 10);
    }
}

TEST(HostilePropertyList, thatSharesItsWayToAnEnormousTreeIsReadOnce) {
    BinaryFile file{.objects = {}};
    file.referenceSize = 2;
    for (std::size_t level = 1; level <= 500; ++level) {
        file.objects.push_back("\xA2" + bigEndian(level, 2) + bigEndian(level, 2));
    }
    file.objects.push_back("Qx");
    ASSERT_TRUE(readPropertyList(file.bytes()));
    expectModest(file.bytes(), 200);
    EXPECT_FALSE(writeXmlPropertyList(*readPropertyList(file.bytes()).value));
}

TEST(HostilePropertyList, thatSharesALongTextTakesItsMemoryOnce) {
    const std::string text = hex("5F 12 00080000") + std::string(1 << 19, 'x');
    const std::size_t count = 100000;
    const std::string list = hex("AF 12") + bigEndian(count, 4) + std::string(count, '\x01');
    const BinaryFile file{.objects = {list, text}, .offsetSize = 4};
    ASSERT_TRUE(readPropertyList(file.bytes()));
    expectModest(file.bytes(), 30);
    EXPECT_FALSE(writeXmlPropertyList(*readPropertyList(file.bytes()).value));
}

/// A list of dictionaries, each with one entry under the one key that they share.
BinaryFile dictionariesSharingAKey(std::size_t count, const std::string& key) {
    constexpr std::size_t referenceSize = 4;
    BinaryFile file{.objects = {}, .offsetSize = 4, .referenceSize = referenceSize};
    std::string list = hex("AF 12") + bigEndian(count, 4);
    for (std::size_t number = 1; number <= count; ++number)
        list += bigEndian(number, referenceSize);
    file.objects.push_back(list);
    for (std::size_t number = 1; number <= count; ++number) {
        file.objects.push_back("\xD1" + bigEndian(count + 1, referenceSize) + bigEndian(count + 2, referenceSize));
    }
    file.objects.push_back(hex("5F 12") + bigEndian(key.size(), 4) + key);
    file.objects.push_back(hex("09"));
    return file;
}

TEST(HostilePropertyList, whoseDictionariesShareALongKeyIsRejected) {
    const BinaryFile file = dictionariesSharingAKey(20000, std::string(1 << 16, 'k'));
    EXPECT_FALSE(readPropertyList(file.bytes()));
    expectModest(file.bytes(), 10);
}

TEST(HostilePropertyList, whoseDictionariesShareUsualKeysIsRead) {
    const BinaryFile file = dictionariesSharingAKey(10000, "com.example.a.key.that.many.entries.share");
    EXPECT_TRUE(readPropertyList(file.bytes()));
    expectModest(file.bytes(), 200);
}

/// The file has room to spare, which what is written of it has not.
TEST(HostilePropertyList, whoseDictionariesShareALongKeyCanBeReadAgainWhenItIsWritten) {
    BinaryFile file{.objects = {}, .gap = std::string(4096, '\0')};
    file.referenceSize = 2;
    const std::size_t count = 400;
    std::string list = hex("AF 11") + bigEndian(count, 2);
    for (std::size_t number = 1; number <= count; ++number)
        list += bigEndian(number, 2);
    file.objects.push_back(list);
    for (std::size_t number = 1; number <= count; ++number) {
        file.objects.push_back("\xD1" + bigEndian(count + 1, 2) + bigEndian(count + 2, 2));
    }
    file.objects.push_back(hex("5F 11 03E8") + std::string(1000, 'k'));
    file.objects.push_back(hex("09"));
    const PropertyListReading reading = readPropertyList(file.bytes());
    ASSERT_TRUE(reading);
    EXPECT_EQ(readPropertyList(*writeBinaryPropertyList(*reading.value).bytes).value, reading.value);
}

/// Every object is a long text that begins a few bytes behind the last and holds all of the rest.
TEST(HostilePropertyList, whoseObjectsOverlapOutOfAllProportionIsRejected) {
    const std::size_t count = 20000;
    const std::size_t listSize = 6 + 4 * count;
    const std::size_t textBegin = 8 + listSize;
    std::string body = hex("AF 12") + bigEndian(count, 4);
    std::vector<std::size_t> offsets{8};
    std::string texts;
    for (std::size_t index = 0; index < count; ++index) {
        body += bigEndian(index + 1, 4);
        offsets.push_back(textBegin + 6 * index);
        texts += hex("4F 12") + bigEndian(6 * (count - index - 1), 4);
    }
    const std::string bytes = laidOut(body + texts, offsets, 4);
    EXPECT_FALSE(readPropertyList(bytes));
    expectModest(bytes, 30);
}

/// Every entry of the offset table leads to the same list.
TEST(HostilePropertyList, thatGivesOneLargeObjectManyNumbersIsRejected) {
    const std::size_t count = 3000;
    const std::size_t listSize = 6 + 4 * count;
    std::string root = hex("AF 12") + bigEndian(count, 4);
    std::string list = root;
    std::vector<std::size_t> offsets{8};
    for (std::size_t index = 0; index < count; ++index) {
        root += bigEndian(index + 1, 4);
        list += bigEndian(count + 1, 4);
        offsets.push_back(8 + listSize);
    }
    offsets.push_back(8 + 2 * listSize);
    const std::string bytes = laidOut(root + list + hex("09"), offsets, 4);
    EXPECT_FALSE(readPropertyList(bytes));
    expectModest(bytes, 60);
}

std::string reasonFor(const std::string& bytes, std::size_t mostValues) {
    return readPropertyListOfStrangers(bytes, mostValues).error.reason;
}

TEST(PropertyListOfStrangers, isReadAsAnyOther) {
    const std::string xml = "<dict><key>a</key><array><true/><string>b</string></array></dict>";
    const std::string binary = *writeBinaryPropertyList(*readPropertyList(xml).value).bytes;
    for (const std::string& bytes : {xml, binary}) {
        const PropertyListReading reading = readPropertyListOfStrangers(bytes, 6);
        ASSERT_TRUE(reading) << reading.error.reason;
        EXPECT_TRUE(*reading.value == *readPropertyList(xml).value);
    }
}

TEST(PropertyListOfStrangers, withTooManyValuesIsRejected) {
    const std::string xml = "<array>" + repeated(10, "<true/>") + "</array>";
    EXPECT_EQ(reasonFor(xml, 11), "");
    EXPECT_EQ(reasonFor(xml, 10), "too many values");
    // An array of ten references to one object, and objects that nothing refers to.
    const std::string members = laidOut("\xAA"s + std::string(10, '\1') + "\x09", {8, 19}, 1);
    EXPECT_EQ(reasonFor(members, 10), "");
    EXPECT_EQ(reasonFor(members, 9), "too many values (object 0)");
    EXPECT_EQ(reasonFor(laidOut("\xA0\x09"s, {8, 9, 9, 9}, 1), 3), "too many objects");
}

TEST(PropertyListOfStrangers, whoseObjectsOverlapIsRejected) {
    // Three strings, each beginning in the one before it.
    const std::string text(200, '\x5F');
    const std::string overlapping =
        laidOut("\xA3\1\2\3\x5F\x10\xC0\x5F\x10\xBD\x5F\x10\xBA"s + text, {8, 12, 15, 18}, 1);
    ASSERT_TRUE(readPropertyList(overlapping));
    EXPECT_EQ(reasonFor(overlapping, 100), "objects that overlap out of all proportion (object 2)");
}

}  // namespace
}  // namespace hostile_property_lists_test
