// SPDX-License-Identifier: MIT
#include "hosts/session/printable.h"

#include <cstddef>

#include "platform/foundation/utf8.h"

namespace hosts {
namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr std::string_view replacementText = "\xEF\xBF\xBD";

std::string withoutSteering(std::string_view text, std::string_view kept) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const platform::Utf8Character character = platform::firstUtf8Character(text);
        const bool isKept = kept.find(text[0]) != kept.npos;
        const bool isBad = character.code == replacement || isSteering(character.code);
        result += isBad && !isKept ? replacementText : text.substr(0, character.length);
        text.remove_prefix(character.length);
    }
    return result;
}

}  // namespace

bool isSteering(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029 ||
           (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string printable(std::string_view text) {
    return withoutSteering(text, {});
}

std::string printableLines(std::string_view text) {
    return withoutSteering(text, "\n\t");
}

}  // namespace hosts
