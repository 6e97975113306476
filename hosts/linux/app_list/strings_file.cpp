// SPDX-License-Identifier: MIT
#include "hosts/linux/app_list/strings_file.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "hosts/linux/app_list/strings_encoding.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/utf8.h"

namespace hosts {
namespace {

namespace unicode = platform;

bool isBlank(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

bool isUnquotedCharacter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           std::string_view("_$/:.-").find(byte) != std::string_view::npos;
}

int digitValue(char byte) {
    if (byte >= '0' && byte <= '9') return byte - '0';
    if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
    if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
    return 16;
}

void appendCharacter(std::string& string, char32_t code) {
    unicode::appendUtf8(string, unicode::isCharacter(code) ? code : unicode::replacementCharacter);
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
    void readEscape(std::string& string);
    char32_t readCodePoint();
    char32_t readNumber(int base, int mostDigits);

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
            readEscape(string);
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
void StringsText::readEscape(std::string& string) {
    constexpr std::string_view letters = "abfnrtv";
    constexpr std::string_view meanings = "\a\b\f\n\r\t\v";
    if (atEnd()) return;
    const char byte = _text[_position];
    if (byte >= '0' && byte <= '7') {
        appendCharacter(string, readNumber(8, 3));
        return;
    }
    ++_position;
    if (byte == 'U' || byte == 'u') {
        appendCharacter(string, readCodePoint());
    } else if (const std::size_t letter = letters.find(byte); letter != letters.npos) {
        string += meanings[letter];
    } else {
        string += byte;
    }
}

// Up to four hexadecimal digits; a surrogate pair takes two such escapes.
char32_t StringsText::readCodePoint() {
    const char32_t high = readNumber(16, 4);
    if (!unicode::isLeadSurrogate(high) || !(startsWith("\\U") || startsWith("\\u"))) return high;
    const std::size_t afterHigh = _position;
    _position += 2;
    const char32_t low = readNumber(16, 4);
    if (unicode::isTrailSurrogate(low)) return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
    _position = afterHigh;
    return high;
}

char32_t StringsText::readNumber(int base, int mostDigits) {
    char32_t number = 0;
    for (int digits = 0; digits < mostDigits && !atEnd(); ++digits) {
        const int digit = digitValue(_text[_position]);
        if (digit >= base) break;
        number = number * static_cast<char32_t>(base) + static_cast<char32_t>(digit);
        ++_position;
    }
    return number;
}

}  // namespace

std::optional<platform::Dictionary> readStringsFile(std::string_view bytes) {
    if (const platform::PropertyListReading reading = platform::readPropertyList(bytes)) {
        const platform::Dictionary* dictionary = reading.value->dictionary();
        return dictionary ? std::optional(*dictionary) : std::nullopt;
    }
    const std::optional<std::string> text = decodeStringsText(bytes);
    return text ? StringsText(*text).read() : std::nullopt;
}

}  // namespace hosts
