// SPDX-License-Identifier: MIT
#include "platform/foundation/utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace platform {
namespace {

TEST(Utf8, isTakenApartCharacterByCharacter) {
    const std::string text = "a\u00E9\u65E5\U0001F30A";
    std::string_view rest = text;
    for (const auto& [code, length] : {Utf8Character{U'a', 1}, {U'\u00E9', 2}, {U'\u65E5', 3}, {U'\U0001F30A', 4}}) {
        const Utf8Character character = firstUtf8Character(rest);
        EXPECT_EQ(character.code, code);
        EXPECT_EQ(character.length, length);
        rest.remove_prefix(character.length);
    }
    EXPECT_TRUE(rest.empty());
    EXPECT_TRUE(isValidUtf8(text));
}

TEST(Utf8, countsAByteThatBeginsNoSequenceForItself) {
    for (const std::string_view text :
         {"\x80", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
          "\xF5\x80\x80\x80", "\xFF", "\xC3", "\xE6\x97", "\xE6\x97z", "\xF0\x9F\x8C", "\xC3z"}) {
        const Utf8Character character = firstUtf8Character(text);
        EXPECT_EQ(character.code, U'\uFFFD') << text;
        EXPECT_EQ(character.length, 1u) << text;
        EXPECT_FALSE(isValidUtf8(text)) << text;
    }
}

TEST(Utf8, holdsTheLastCharactersBeforeEachGap) {
    for (const std::string_view text : {"\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF",
                                        "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(firstUtf8Character(text).length, text.size());
        EXPECT_TRUE(isValidUtf8(text));
    }
}

}  // namespace
}  // namespace platform
