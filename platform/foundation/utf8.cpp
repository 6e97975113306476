// SPDX-License-Identifier: MIT
#include "platform/foundation/utf8.h"

#include "platform/foundation/bytes.h"

namespace platform {

namespace {

/// How a UTF-8 sequence that begins with some byte has to go on.
struct SequenceShape {
    std::size_t length;            ///< 0 for a byte that begins no sequence
    unsigned char leastSecond;     ///< narrower than 0x80 … 0xBF where that keeps out overlong
    unsigned char greatestSecond;  ///< forms, surrogates and values above U+10FFFF
};

SequenceShape sequenceShape(unsigned char lead) {
    if (lead < 0x80) return {1, 0x80, 0xBF};
    if (lead < 0xC2) return {0, 0x80, 0xBF};
    if (lead < 0xE0) return {2, 0x80, 0xBF};
    if (lead == 0xE0) return {3, 0xA0, 0xBF};
    if (lead == 0xED) return {3, 0x80, 0x9F};
    if (lead < 0xF0) return {3, 0x80, 0xBF};
    if (lead == 0xF0) return {4, 0x90, 0xBF};
    if (lead < 0xF4) return {4, 0x80, 0xBF};
    if (lead == 0xF4) return {4, 0x80, 0x8F};
    return {0, 0x80, 0xBF};
}

/// The bytes of the valid sequence at the front of the text, or 0. The text is not empty.
std::size_t sequenceLength(std::string_view text) {
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const SequenceShape shape = sequenceShape(byteAt(0));
    if (shape.length > text.size()) return 0;
    if (shape.length > 1 && (byteAt(1) < shape.leastSecond || byteAt(1) > shape.greatestSecond)) return 0;
    for (std::size_t index = 2; index < shape.length; ++index) {
        if (!isUtf8Continuation(text[index])) return 0;
    }
    return shape.length;
}

char32_t decodeValidSequence(std::string_view sequence) {
    constexpr unsigned char leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t character = static_cast<unsigned char>(sequence[0]) & leadBits[sequence.size()];
    for (const char byte : sequence.substr(1))
        character = character << 6 | (static_cast<unsigned char>(byte) & 0x3Fu);
    return character;
}

char32_t utf16Unit(std::string_view bytes, std::size_t index) {
    return static_cast<char32_t>(readBigEndian(bytes.substr(index, 2)));
}

void appendUtf16Unit(std::string& bytes, char32_t unit) {
    bytes.push_back(static_cast<char>(unit >> 8 & 0xFF));
    bytes.push_back(static_cast<char>(unit & 0xFF));
}

void appendUtf16(std::string& bytes, char32_t character) {
    if (character < 0x10000) return appendUtf16Unit(bytes, character);
    appendUtf16Unit(bytes, 0xD800 + ((character - 0x10000) >> 10));
    appendUtf16Unit(bytes, 0xDC00 + (character & 0x3FF));
}

void appendUtf16OfAscii(std::string& bytes, std::string_view text) {
    std::size_t lowByte = bytes.size() + 1;
    bytes.resize(bytes.size() + 2 * text.size());
    for (const char letter : text) {
        bytes[lowByte] = letter;
        lowByte += 2;
    }
}

const char* findNonAscii(const char* position, const char* end) {
    return findStop<StopSet<>>(position, end);
}

}  // namespace

void appendUtf8(std::string& text, char32_t character) {
    const auto append = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    const auto appendContinuation = [&](int shift) { append(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) return append(character);
    if (character < 0x800) {
        append(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            append(0xE0 | character >> 12);
        } else {
            append(0xF0 | character >> 18);
            appendContinuation(12);
        }
        appendContinuation(6);
    }
    appendContinuation(0);
}

Utf8Character firstUtf8Character(std::string_view text) {
    const std::size_t length = sequenceLength(text);
    if (length == 0) return {replacementCharacter, 1};
    return {decodeValidSequence(text.substr(0, length)), length};
}

std::size_t findInvalidUtf8(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* position = text.data();
    while ((position = findNonAscii(position, end)) != end) {
        const std::size_t length = sequenceLength({position, static_cast<std::size_t>(end - position)});
        if (length == 0) break;
        position += length;
    }
    return static_cast<std::size_t>(position - text.data());
}

bool isAscii(std::string_view text) {
    const char* const end = text.data() + text.size();
    return findNonAscii(text.data(), end) == end;
}

std::string utf8FromLatin1(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        appendUtf8(text, static_cast<unsigned char>(byte));
    return text;
}

std::string utf8FromUtf16(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        char32_t character = utf16Unit(bytes, index);
        if (isLeadSurrogate(character) && index + 2 < bytes.size() && isTrailSurrogate(utf16Unit(bytes, index + 2))) {
            index += 2;
            character = 0x10000 + ((character & 0x3FF) << 10 | (utf16Unit(bytes, index) & 0x3FF));
        }
        appendUtf8(text, isCharacter(character) ? character : replacementCharacter);
    }
    return text;
}

std::size_t utf16Length(std::string_view text) {
    std::size_t units = 0;
    for (const char byte : text) {
        const bool isFour = static_cast<unsigned char>(byte) >= 0xF0;
        // Each sequence makes a unit, and those of four bytes a second one.
        units += static_cast<std::size_t>(!isUtf8Continuation(byte)) + static_cast<std::size_t>(isFour);
    }
    return units;
}

void appendUtf16FromUtf8(std::string& bytes, std::string_view text) {
    while (!text.empty()) {
        const char* const end = text.data() + text.size();
        const auto plain = static_cast<std::size_t>(findNonAscii(text.data(), end) - text.data());
        appendUtf16OfAscii(bytes, text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) break;
        const std::size_t length = sequenceLength(text);
        appendUtf16(bytes, decodeValidSequence(text.substr(0, length)));
        text.remove_prefix(length);
    }
}

}  // namespace platform
