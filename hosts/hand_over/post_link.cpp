// SPDX-License-Identifier: MIT
#include "hosts/hand_over/post_link.h"

#include "platform/services/post_composer.h"

namespace hosts {

namespace {

constexpr std::string_view twitterComposer = "https://twitter.com/intent/tweet?text=";

// RFC 3986's unreserved characters; all others are written as their bytes.
bool isUnreserved(char letter) {
    return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') ||
           std::string_view{"-._~"}.find(letter) != std::string_view::npos;
}

std::string percentEncoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if (isUnreserved(letter)) {
            encoded += letter;
        } else {
            encoded.append({'%', digits[byte >> 4], digits[byte & 0xF]});
        }
    }
    return encoded;
}

}  // namespace

std::optional<std::string> postLink(std::string_view serviceType, std::string_view text) {
    if (serviceType != platform::SLServiceTypeTwitter) return std::nullopt;
    return std::string{twitterComposer} + percentEncoded(text);
}

}  // namespace hosts
