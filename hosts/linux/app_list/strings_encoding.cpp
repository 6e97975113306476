// SPDX-License-Identifier: MIT
#include "hosts/linux/app_list/strings_encoding.h"

#include <cstddef>
#include <utility>

#include "platform/foundation/utf8.h"

namespace hosts {
namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view littleEndianMark = "\xFF\xFE";
constexpr std::string_view bigEndianMark = "\xFE\xFF";

enum class Encoding { utf8, utf16LittleEndian, utf16BigEndian };

struct EncodedText {
    Encoding encoding;
    std::string_view bytes;
};

// The first character is one of ASCII: a blank, a quote, a comment, a letter of a key.
Encoding unmarkedEncoding(std::string_view bytes) {
    if (bytes.size() < 2 || (bytes[0] == '\0') == (bytes[1] == '\0')) return Encoding::utf8;
    return bytes[0] == '\0' ? Encoding::utf16BigEndian : Encoding::utf16LittleEndian;
}

EncodedText withoutMark(std::string_view bytes) {
    if (bytes.starts_with(utf8Mark)) return {Encoding::utf8, bytes.substr(utf8Mark.size())};
    if (bytes.starts_with(littleEndianMark)) {
        return {Encoding::utf16LittleEndian, bytes.substr(littleEndianMark.size())};
    }
    if (bytes.starts_with(bigEndianMark)) return {Encoding::utf16BigEndian, bytes.substr(bigEndianMark.size())};
    return {unmarkedEncoding(bytes), bytes};
}

std::string withBytesSwapped(std::string_view bytes) {
    std::string swapped(bytes);
    for (std::size_t unit = 0; unit + 1 < swapped.size(); unit += 2) {
        std::swap(swapped[unit], swapped[unit + 1]);
    }
    return swapped;
}

}  // namespace

std::optional<std::string> decodeStringsText(std::string_view bytes) {
    const EncodedText text = withoutMark(bytes);
    if (text.encoding == Encoding::utf8) {
        return platform::isValidUtf8(text.bytes) ? std::optional<std::string>(text.bytes) : std::nullopt;
    }
    if (text.bytes.size() % 2 != 0) return std::nullopt;
    const bool swap = text.encoding == Encoding::utf16LittleEndian;
    return platform::utf8FromUtf16(swap ? withBytesSwapped(text.bytes) : std::string(text.bytes));
}

}  // namespace hosts
