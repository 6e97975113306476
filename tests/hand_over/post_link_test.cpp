// SPDX-License-Identifier: MIT
#include "hosts/hand_over/post_link.h"

#include <gtest/gtest.h>

#include "platform/services/post_composer.h"

namespace {

std::string encoded(std::string_view text) {
    const std::string prefix = "https://twitter.com/intent/tweet?text=";
    const auto link = hosts::postLink(platform::SLServiceTypeTwitter, text);
    EXPECT_TRUE(link && link->starts_with(prefix));
    return link.value_or(prefix).substr(prefix.size());
}

TEST(PostLink, holdsTheShareMessage) {
    EXPECT_EQ(encoded("I'm loving #Trivel3 from @Fenwary!"), "I%27m%20loving%20%23Trivel3%20from%20%40Fenwary%21");
}

TEST(PostLink, leavesUnreservedCharactersAsTheyAre) {
    const std::string_view unreserved = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    EXPECT_EQ(encoded(unreserved), unreserved);
}

TEST(PostLink, encodesEveryOtherByte) {
    std::string others;
    std::string expected;
    for (int byte = 0; byte < 256; ++byte) {
        const auto letter = static_cast<char>(byte);
        if (std::isalnum(byte) || std::string_view{"-._~"}.find(letter) != std::string_view::npos) continue;
        others += letter;
        char code[4];
        std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned>(byte));
        expected += code;
    }
    EXPECT_EQ(others.size(), 190u);
    EXPECT_EQ(encoded(others), expected);
}

TEST(PostLink, encodesTextBeyondAsciiAsUtf8) {
    EXPECT_EQ(encoded("Gr\xC3\xBC\xC3\x9F"
                      "e \xF0\x9F\x9A\x8A\n"),
              "Gr%C3%BC%C3%9Fe%20%F0%9F%9A%8A%0A");
}

TEST(PostLink, mayHoldNoText) {
    EXPECT_EQ(encoded(""), "");
}

TEST(PostLink, isThereForThatOneServiceAlone) {
    EXPECT_FALSE(hosts::postLink("SLServiceTypeOther", "text"));
    EXPECT_FALSE(hosts::postLink("", "text"));
}

}  // namespace
