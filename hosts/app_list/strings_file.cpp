// SPDX-License-Identifier: MIT
#include "hosts/app_list/strings_file.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/ascii.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/utf8.h"

namespace hosts {
namespace {

using platform::digitValue;
using platform::isDigit;
using platform::utf8FromUtf16;

// Of UTF-16, an even number of bytes.
std::string withBytesSwapped(std::string_view bytes) {
    std::string swapped(bytes);
    for (std::size_t unit = 0; unit + 1 < swapped.size(); unit += 2) {
        std::swap(swapped[unit], swapped[unit + 1]);
    }
    return swapped;
}

// The file's text as UTF-8, without its byte order mark. Where there is none, the zero byte of the
// first character tells UTF-16, since that one is of ASCII: a blank, a quote, a comment, a letter of
// a key. Half a surrogate pair becomes U+FFFD. Nothing for bytes that are no text.
std::optional<std::string> decodedText(std::string_view bytes) {
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    const bool hasMark = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    if (hasMark || (bytes.size() >= 2 && (bytes[0] == '\0') != (bytes[1] == '\0'))) {
        if (bytes.size() % 2 != 0) return std::nullopt;
        const bool isLittleEndian = hasMark ? bytes[0] == '\xFF' : bytes[1] == '\0';
        if (hasMark) bytes.remove_prefix(2);
        return utf8FromUtf16(isLittleEndian ? withBytesSwapped(bytes) : std::string(bytes));
    }
    if (bytes.starts_with(utf8Mark)) bytes.remove_prefix(utf8Mark.size());
    return platform::isValidUtf8(bytes) ? std::optional<std::string>(bytes) : std::nullopt;
}

bool isBlank(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

bool isUnquotedCharacter(char byte) {
    return isDigit(byte) || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           std::string_view("_$/:.-").find(byte) != std::string_view::npos;
}

/// The old text form, as UTF-8.
class StringsText {
public:
    explicit StringsText(std::string_view text) : _text(text) {}

    std::optional<platform::Dictionary> read();

private:
    bool atEnd() const { return _position == _text.size(); }
    bool startsWith(std::string_view prefix) const { return _text.substr(_position).starts_with(prefix); }
    bool accept(char byte);
    bool skipPast(std::string_view end);
    bool skipBlanksAndComments();

    bool readEntry();
    std::optional<std::string> readString();
    std::optional<std::string> readQuoted(char quote);
    std::optional<std::string> readUnquoted();
    std::string readEscape();
    std::string readCodePoints();
    std::string readUnit(unsigned base, int mostDigits);

    std::string_view _text;
    std::size_t _position = 0;
    std::vector<platform::Dictionary::Entry> _entries;
};

bool StringsText::accept(char byte) {
    if (atEnd() || _text[_position] != byte) return false;
    ++_position;
    return true;
}

bool StringsText::skipPast(std::string_view end) {
    const std::size_t found = _text.find(end, _position);
    if (found == _text.npos) return false;
    _position = found + end.size();
    return true;
}

// False when a comment has no end.
bool StringsText::skipBlanksAndComments() {
    while (!atEnd()) {
        if (isBlank(_text[_position])) {
            ++_position;
        } else if (startsWith("//")) {
            if (!skipPast("\n")) _position = _text.size();
        } else if (startsWith("/*")) {
            _position += 2;
            if (!skipPast("*/")) return false;
        } else {
            break;
        }
    }
    return true;
}

std::optional<platform::Dictionary> StringsText::read() {
    if (!skipBlanksAndComments()) return std::nullopt;
    const bool braced = accept('{');
    if (braced && !skipBlanksAndComments()) return std::nullopt;
    while (!atEnd() && _text[_position] != '}') {
        if (!readEntry()) return std::nullopt;
    }
    if (accept('}') != braced || !skipBlanksAndComments() || !atEnd()) return std::nullopt;
    return platform::Dictionary(std::move(_entries), platform::Dictionary::Duplicates::lastWins);
}

bool StringsText::readEntry() {
    std::optional<std::string> key = readString();
    if (!key || !skipBlanksAndComments()) return false;
    std::optional<std::string> value = key;
    if (accept('=')) {
        if (!skipBlanksAndComments()) return false;
        value = readString();
        if (!value || !skipBlanksAndComments()) return false;
    }
    if (!accept(';')) return false;
    _entries.push_back({std::move(*key), platform::Value(std::move(*value))});
    return skipBlanksAndComments();
}

std::optional<std::string> StringsText::readString() {
    for (const char quote : {'"', '\''}) {
        if (accept(quote)) return readQuoted(quote);
    }
    return readUnquoted();
}

std::optional<std::string> StringsText::readQuoted(char quote) {
    std::string string;
    while (!atEnd()) {
        const char byte = _text[_position++];
        if (byte == quote) return string;
        if (byte == '\\') {
            string += readEscape();
        } else {
            string += byte;
        }
    }
    return std::nullopt;
}

std::optional<std::string> StringsText::readUnquoted() {
    const std::size_t start = _position;
    while (!atEnd() && isUnquotedCharacter(_text[_position]))
        ++_position;
    if (_position == start) return std::nullopt;
    return std::string(_text.substr(start, _position - start));
}

// What follows a backslash. At the end of the text nothing does, and the string has no end either.
std::string StringsText::readEscape() {
    constexpr std::string_view letters = "abfnrtv";
    constexpr std::string_view meanings = "\a\b\f\n\r\t\v";
    if (atEnd()) return {};
    const char byte = _text[_position];
    if (byte >= '0' && byte <= '7') return utf8FromUtf16(readUnit(8, 3));
    ++_position;
    if (byte == 'U' || byte == 'u') return readCodePoints();
    const std::size_t letter = letters.find(byte);
    return std::string(1, letter == letters.npos ? byte : meanings[letter]);
}

// Each such escape is a unit of UTF-16, and those that follow one another may belong together.
std::string StringsText::readCodePoints() {
    std::string units = readUnit(16, 4);
    while (startsWith("\\U") || startsWith("\\u")) {
        _position += 2;
        units += readUnit(16, 4);
    }
    return utf8FromUtf16(units);
}

// A number of digits as one unit of UTF-16, big-endian.
std::string StringsText::readUnit(unsigned base, int mostDigits) {
    unsigned number = 0;
    for (int digits = 0; digits < mostDigits && !atEnd(); ++digits) {
        const unsigned digit = digitValue(_text[_position]);
        if (digit >= base) break;
        number = number * base + digit;
        ++_position;
    }
    return {static_cast<char>(number >> 8), static_cast<char>(number & 0xFF)};
}

}  // namespace

std::optional<platform::Dictionary> readStringsFile(std::string_view bytes) {
    if (const platform::PropertyListReading reading = platform::readPropertyList(bytes)) {
        const platform::Dictionary* dictionary = reading.value->dictionary();
        return dictionary ? std::optional(*dictionary) : std::nullopt;
    }
    const std::optional<std::string> text = decodedText(bytes);
    return text ? StringsText(*text).read() : std::nullopt;
}

}  // namespace hosts
