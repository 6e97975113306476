// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/property_list.h"
#include "tests/kit/print.h"
#include "tests/property_lists/golden_cases.h"
#include "tests/property_lists/random_value.h"

namespace {

using namespace platform;

TEST(RoundTrip, throughXmlGivesTheSameValue) {
    RandomValues values(1, RandomValues::Kinds::thoseOfXml);
    for (int count = 0; count < 1500; ++count) {
        const Value value = values.next();
        const PropertyListWriting writing = writeXmlPropertyList(value);
        ASSERT_TRUE(writing) << writing.reason;
        const PropertyListReading reading = readPropertyList(*writing.bytes);
        ASSERT_TRUE(reading) << reading.error.reason << '\n' << *writing.bytes;
        ASSERT_TRUE(*reading.value == value) << *writing.bytes;
        ASSERT_EQ(writeXmlPropertyList(*reading.value).bytes, writing.bytes);
    }
}

/// A double holds no single seconds that far away, so what is read may be a few seconds off; from then
/// on nothing changes any more.
TEST(RoundTrip, throughXmlGivesTheSameDateInTheFarthestYears) {
    std::mt19937_64 random(8);
    for (int count = 0; count < 20000; ++count) {
        const auto twoDigits = [&] { return std::to_string(10 + random() % 90); };
        const std::string year = std::to_string(static_cast<std::int32_t>(random()));
        const std::string xml = "<date>" + year + '-' + twoDigits() + '-' + twoDigits() + 'T' + twoDigits() + ':' +
                                twoDigits() + ':' + twoDigits() + "Z</date>";
        const PropertyListReading reading = readPropertyList(xml);
        ASSERT_TRUE(reading) << xml;
        const PropertyListWriting writing = writeXmlPropertyList(*reading.value);
        if (!writing) continue;
        ASSERT_EQ(readPropertyList(*writing.bytes).value, reading.value) << xml << '\n' << *writing.bytes;
    }
}

TEST(RoundTrip, throughTheBinaryFormatGivesTheSameValue) {
    RandomValues values(2, RandomValues::Kinds::all);
    for (int count = 0; count < 3000; ++count) {
        const Value value = values.next();
        const PropertyListWriting writing = writeBinaryPropertyList(value);
        ASSERT_TRUE(writing) << writing.reason;
        const PropertyListReading reading = readPropertyList(*writing.bytes);
        ASSERT_TRUE(reading) << reading.error.reason;
        ASSERT_TRUE(*reading.value == value);
        ASSERT_EQ(writeBinaryPropertyList(*reading.value).bytes, writing.bytes);
    }
}

/// What reading some keys has to give, told by the full read.
std::optional<Value> keysByReading(const std::string& bytes, std::span<const std::string_view> keys) {
    const PropertyListReading reading = readPropertyList(bytes);
    if (!reading || !reading.value->dictionary()) return std::nullopt;
    Dictionary wanted;
    for (const std::string_view key : keys) {
        if (const Value* value = reading.value->dictionary()->find(key)) wanted.set(key, *value);
    }
    return wanted;
}

/// Expects that reading some keys says the same as the full read, that nothing that was read is refused by
/// the binary writer, and that errors point into the file.
void expectConsistent(const std::string& bytes) {
    constexpr std::string_view keys[] = {"a", "k", "CF$UID", "absent"};
    const std::optional<Value> some = readRootKeys(bytes, keys);
    ASSERT_EQ(some, keysByReading(bytes, keys)) << testing::PrintToString(bytes);
    const PropertyListReading reading = readPropertyList(bytes);
    if (!reading) {
        ASSERT_FALSE(reading.error.reason.empty());
        ASSERT_LE(reading.error.offset, bytes.size());
        return;
    }
    const PropertyListWriting writing = writeBinaryPropertyList(*reading.value);
    ASSERT_TRUE(writing) << writing.reason << testing::PrintToString(bytes);
    const PropertyListReading again = readPropertyList(*writing.bytes);
    ASSERT_TRUE(again) << again.error.reason << testing::PrintToString(bytes);
    ASSERT_TRUE(*again.value == *reading.value) << testing::PrintToString(bytes);
}

/// All golden inputs but those whose size would make the tests slow.
std::vector<std::string> seeds() {
    constexpr std::size_t greatestSize = 1200;
    std::vector<std::string> found;
    for (const golden::Case& golden : golden::cases()) {
        std::string bytes = golden::input(golden);
        if (!bytes.empty() && bytes.size() <= greatestSize) found.push_back(std::move(bytes));
    }
    return found;
}

TEST(DamagedPropertyList, cutOffAnywhereIsReadAlikeInPartAndInWhole) {
    for (const std::string& seed : seeds()) {
        for (std::size_t size = 0; size < seed.size(); ++size) {
            ASSERT_NO_FATAL_FAILURE(expectConsistent(seed.substr(0, size)));
        }
    }
}

TEST(DamagedPropertyList, isNeverReadWhenItsBinaryFormIsCutOff) {
    for (const std::string& seed : seeds()) {
        if (!seed.starts_with("bplist0") || !readPropertyList(seed)) continue;
        for (std::size_t size = 0; size < seed.size(); ++size) {
            ASSERT_FALSE(readPropertyList(seed.substr(0, size))) << testing::PrintToString(seed) << size;
        }
    }
}

/// One change that damage or a hostile hand might make.
std::string mutated(std::string bytes, const std::vector<std::string>& seeds, std::mt19937& random) {
    const auto below = [&](std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
    };
    static const std::string pieces[] = {"<",        ">",         "&",       "</dict>",   "<dict>",    "<key>a</key>",
                                         "<true/>",  "/>",        "<!--",    "-->",       "<![CDATA[", "]]>",
                                         "&#;",      "&#x1F600;", "\n",      "<integer>", "CF$UID",    "\xEF\xBB\xBF",
                                         "\xC3\xA9", "<plist>",   "</plist>"};
    const std::size_t place = below(bytes.size());
    switch (below(7)) {
        case 0:
            bytes[place] = static_cast<char>(random() & 0xFF);
            break;
        case 1:
            bytes[place] = static_cast<char>(bytes[place] ^ (1 << below(8)));
            break;
        case 2:
            bytes.erase(place, 1 + below(8));
            break;
        case 3:
            bytes.insert(place, pieces[below(std::size(pieces))]);
            break;
        case 4:
            bytes.replace(place, 1, pieces[below(std::size(pieces))]);
            break;
        case 5:
            bytes.insert(place, bytes.substr(below(bytes.size()), below(40)));
            break;
        default: {
            const std::string& other = seeds[below(seeds.size())];
            bytes = bytes.substr(0, place) + other.substr(std::min(place, other.size()));
        }
    }
    return bytes;
}

TEST(DamagedPropertyList, changedAnyhowIsReadAlikeInPartAndInWhole) {
    const std::vector<std::string> seeds = ::seeds();
    std::mt19937 random(3);
    for (int round = 0; round < 60; ++round) {
        for (const std::string& seed : seeds) {
            std::string bytes = seed;
            for (int count = 0; count <= round % 3 && !bytes.empty(); ++count)
                bytes = mutated(bytes, seeds, random);
            ASSERT_NO_FATAL_FAILURE(expectConsistent(bytes));
        }
    }
}

TEST(DamagedPropertyList, ofAnyBytesIsReadAlikeInPartAndInWhole) {
    std::mt19937 random(4);
    for (int count = 0; count < 3000; ++count) {
        std::string bytes(random() % 64, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random() & 0xFF);
        ASSERT_NO_FATAL_FAILURE(expectConsistent(bytes));
        ASSERT_NO_FATAL_FAILURE(expectConsistent("bplist00" + bytes));
        ASSERT_NO_FATAL_FAILURE(expectConsistent("<dict><key>a</key>" + bytes));
    }
}

}  // namespace
