// SPDX-License-Identifier: MIT
#include "platform/foundation/value.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace value_test {

namespace {

using namespace platform;
using Duplicates = Dictionary::Duplicates;

std::vector<std::string> keys(const Dictionary& dictionary) {
    std::vector<std::string> found;
    for (const auto& [key, value] : dictionary)
        found.push_back(key);
    return found;
}

TEST(Dictionary, iteratesInOrderOfUtf16Units) {
    const Dictionary dictionary{{"\xEE\x80\x80", 1},
                                {"\xF0\x9F\x98\x80", 2},
                                {"\xED\x9F\xBF", 3},
                                {"é", 4},
                                {"a", 5},
                                {"ab", 6},
                                {"", 7},
                                {"B", 8}};
    EXPECT_EQ(keys(dictionary),
              (std::vector<std::string>{"", "B", "a", "ab", "é", "\xED\x9F\xBF", "\xF0\x9F\x98\x80", "\xEE\x80\x80"}));
}

TEST(Dictionary, keepsOneOfEqualKeys) {
    const std::vector<Dictionary::Entry> entries{{"b", 1}, {"a", 2}, {"b", 3}, {"a", 4}, {"b", 5}};
    const Dictionary first(entries, Duplicates::firstWins);
    EXPECT_EQ(keys(first), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(integerValue(*first.find("a")), 2);
    EXPECT_EQ(integerValue(*first.find("b")), 1);
    const Dictionary last(entries, Duplicates::lastWins);
    EXPECT_EQ(keys(last), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(integerValue(*last.find("a")), 4);
    EXPECT_EQ(integerValue(*last.find("b")), 5);
}

TEST(Dictionary, keepsOneOfEqualKeysThatAreInOrder) {
    const std::vector<Dictionary::Entry> entries{{"a", 1}, {"a", 2}, {"b", 3}};
    EXPECT_EQ(integerValue(*Dictionary(entries, Duplicates::firstWins).find("a")), 1);
    EXPECT_EQ(integerValue(*Dictionary(entries, Duplicates::lastWins).find("a")), 2);
}

TEST(Dictionary, findsSetsAndRemoves) {
    Dictionary dictionary;
    EXPECT_TRUE(dictionary.empty());
    dictionary.set("b", 1);
    dictionary.set("a", 2);
    dictionary.set("b", 3);
    EXPECT_EQ(dictionary.size(), 2u);
    EXPECT_EQ(integerValue(*dictionary.find("b")), 3);
    EXPECT_TRUE(dictionary.contains("a"));
    EXPECT_FALSE(dictionary.contains("A"));
    EXPECT_EQ(dictionary.find("c"), nullptr);
    dictionary.remove("a");
    dictionary.remove("c");
    EXPECT_EQ(keys(dictionary), std::vector<std::string>{"b"});
}

TEST(Dictionary, findsEachOfManyKeys) {
    std::mt19937 random(7);
    Dictionary dictionary;
    for (int index = 0; index < 1000; ++index)
        dictionary.set("com.example.app" + std::to_string(random()), index);
    const std::vector<std::string> all = keys(dictionary);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
    for (const std::string& key : all)
        ASSERT_NE(dictionary.find(key), nullptr) << key;
}

TEST(Utf16Order, isThatOfTheEncodedUnits) {
    const std::vector<std::string> ascending{"",
                                             "\x01",
                                             "a",
                                             "a\x01",
                                             "aa",
                                             "aaaaaaaaaaaaaaaaX",
                                             "aaaaaaaaaaaaaaaaa",
                                             "b",
                                             "\xC2\x80",
                                             "\xE0\xA0\x80",
                                             "\xED\x9F\xBF",
                                             "\xF0\x90\x80\x80",
                                             "\xF4\x8F\xBF\xBF",
                                             "\xEE\x80\x80",
                                             "\xEF\xBF\xBF"};
    for (std::size_t left = 0; left < ascending.size(); ++left) {
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            EXPECT_EQ(precedesInUtf16Order(ascending[left], ascending[right]), left < right) << left << ' ' << right;
        }
    }
}

TEST(Value, tellsItsKindApart) {
    EXPECT_TRUE(Value().isNull());
    EXPECT_TRUE(Value(true).boolean());
    EXPECT_FALSE(Value(true).integer());
    EXPECT_FALSE(Value(1).boolean());
    EXPECT_FALSE(Value(1).real());
    EXPECT_EQ(*Value("a").string(), "a");
    EXPECT_EQ(Value(Data(3)).data()->size(), 3u);
    EXPECT_EQ(Value(Array{1, 2}).array()->size(), 2u);
    EXPECT_EQ(Value(Set{{1, 2}}).set()->members.size(), 2u);
    EXPECT_EQ(Value(Dictionary{{"a", 1}}).dictionary()->size(), 1u);
    EXPECT_EQ(Value(Uid{7}).uid()->number, 7u);
    EXPECT_EQ(Value(Date{7}).date()->secondsSince2001, 7);
}

TEST(Value, takesANullPointerAsNull) {
    EXPECT_TRUE(Value(std::shared_ptr<const Array>()).isNull());
    EXPECT_TRUE(Value(std::shared_ptr<const Dictionary>()).isNull());
}

TEST(Value, equalsOnlyTheSameKindAndContent) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Value> distinct{Null(),
                                      true,
                                      false,
                                      1,
                                      2,
                                      std::uint64_t{1} << 63,
                                      -1,
                                      1.0,
                                      0.0,
                                      -0.0,
                                      nan,
                                      "1",
                                      "",
                                      Date{1},
                                      Date{-0.0},
                                      Uid{1},
                                      Data(),
                                      Data(1),
                                      Array(),
                                      Array{1},
                                      Array{1, 2},
                                      Array{2, 1},
                                      Set(),
                                      Set{{1}},
                                      Dictionary(),
                                      Dictionary{{"a", 1}},
                                      Dictionary{{"a", 2}},
                                      Dictionary{{"b", 1}},
                                      Dictionary{{"a", 1}, {"b", 1}}};
    for (std::size_t left = 0; left < distinct.size(); ++left) {
        for (std::size_t right = 0; right < distinct.size(); ++right) {
            EXPECT_EQ(distinct[left] == distinct[right], left == right) << left << ' ' << right;
        }
    }
}

TEST(Dictionary, countsOddEntriesNowhere) {
    Dictionary dictionary;
    dictionary.addOddEntry(1, "a");
    EXPECT_TRUE(dictionary.empty());
    EXPECT_EQ(dictionary.size(), 0u);
    EXPECT_EQ(dictionary.begin(), dictionary.end());
}

TEST(Value, comparesOddEntries) {
    Dictionary left;
    left.addOddEntry(1, "a");
    Dictionary same;
    same.addOddEntry(1, "a");
    Dictionary other;
    other.addOddEntry(2, "a");
    EXPECT_TRUE(Value(left) == Value(same));
    EXPECT_FALSE(Value(left) == Value(other));
    EXPECT_FALSE(Value(left) == Value(Dictionary()));
}

/// An array of two of the last, over and over; its leaves stand at the bottom of 2^times paths.
Value doubled(int times, Value leaf) {
    for (int count = 0; count < times; ++count)
        leaf = Array{leaf, leaf};
    return leaf;
}

TEST(Value, comparesSharedContainersOnce) {
    EXPECT_TRUE(doubled(400, "x") == doubled(400, "x"));
    EXPECT_FALSE(doubled(400, "x") == doubled(400, "y"));
    EXPECT_FALSE(doubled(400, "x") == doubled(401, "x"));
}

/// As `doubled`, but every other level is made of copies that nothing shares.
Value doubledWithCopies(int times, Value leaf, bool startCopied) {
    for (int count = 0; count < times; ++count) {
        if ((count % 2 == 0) == startCopied) {
            leaf = Array{Array{leaf}, Array{leaf}};
        } else {
            const Value shared = Array{leaf};
            leaf = Array{shared, shared};
        }
    }
    return leaf;
}

TEST(Value, comparesContainersSharedOnEitherSideOnce) {
    EXPECT_TRUE(doubledWithCopies(200, "x", true) == doubledWithCopies(200, "x", false));
    EXPECT_FALSE(doubledWithCopies(200, "x", true) == doubledWithCopies(200, "y", false));
}

TEST(Value, sharesWhatItCopies) {
    const Value text = std::string(1000, 'x');
    const Value copy = text;
    EXPECT_EQ(copy.string(), text.string());
    const Value list = Array{text};
    EXPECT_EQ(list.array()->front().string(), text.string());
}

}  // namespace
}  // namespace value_test
