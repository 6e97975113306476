// SPDX-License-Identifier: MIT
#include "platform/foundation/base64.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace platform {

namespace {

constexpr std::string_view base64Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr auto base64Values = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (std::size_t index = 0; index < base64Alphabet.size(); ++index) {
        values[static_cast<std::size_t>(base64Alphabet[index])] = static_cast<std::int8_t>(index);
    }
    values['='] = 0;
    return values;
}();

bool isSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// Gathers four characters at a time. How many bytes a group gives depends on how many padding
/// signs stand right before its end, spaces between them aside.
class Base64Decoder {
public:
    explicit Base64Decoder(std::size_t textLength) { _data.reserve(textLength / 4 * 3); }

    void take(char character) {
        if (character == '=') {
            ++_padding;
        } else if (!isSpace(character)) {
            _padding = 0;
        }
        const std::int8_t value = base64Values[static_cast<unsigned char>(character)];
        if (value < 0) return;
        _bits = _bits << 6 | static_cast<std::uint32_t>(value);
        if (++_characters % 4 == 0) finishGroup();
    }

    Data data() { return std::move(_data); }

private:
    void finishGroup() {
        _data.push_back(static_cast<std::byte>(_bits >> 16 & 0xFF));
        if (_padding < 2) _data.push_back(static_cast<std::byte>(_bits >> 8 & 0xFF));
        if (_padding < 1) _data.push_back(static_cast<std::byte>(_bits & 0xFF));
    }

    Data _data;
    std::uint32_t _bits = 0;
    std::size_t _characters = 0;
    std::size_t _padding = 0;
};

/// The four characters of one to three bytes.
std::array<char, 4> encodeGroup(std::span<const std::byte> bytes) {
    std::uint32_t bits = 0;
    for (std::size_t index = 0; index < 3; ++index) {
        bits = bits << 8 | (index < bytes.size() ? std::to_integer<std::uint32_t>(bytes[index]) : 0u);
    }
    std::array<char, 4> characters{};
    for (std::size_t index = 0; index < 4; ++index) {
        characters[index] = index <= bytes.size() ? base64Alphabet[bits >> (18 - 6 * index) & 0x3F] : '=';
    }
    return characters;
}

}  // namespace

Data decodeBase64(std::string_view text) {
    Base64Decoder decoder(text.size());
    for (const char character : text)
        decoder.take(character);
    return decoder.data();
}

void appendBase64(std::string& text, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const auto group = bytes.first(std::min<std::size_t>(3, bytes.size()));
        const auto characters = encodeGroup(group);
        text.append(characters.data(), characters.size());
        bytes = bytes.subspan(group.size());
    }
}

void appendBase64Lines(std::string& text, std::span<const std::byte> bytes, std::size_t lineLength, std::size_t tabs) {
    const std::size_t bytesPerLine = lineLength / 4 * 3;
    while (!bytes.empty()) {
        const auto line = bytes.first(std::min(bytesPerLine, bytes.size()));
        text.append(tabs, '\t');
        appendBase64(text, line);
        text += '\n';
        bytes = bytes.subspan(line.size());
    }
}

}  // namespace platform
