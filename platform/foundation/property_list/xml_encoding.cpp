// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/foundation/ascii.h"
#include "platform/foundation/utf8.h"

namespace platform::property_list {

namespace {

struct ByteOrderMark {
    std::string_view bytes;
    Encoding encoding;
};

/// The marks of UTF-32 stand first, because one of them begins with one of UTF-16.
constexpr std::array byteOrderMarks{
    ByteOrderMark{{"\xEF\xBB\xBF", 3}, Encoding::utf8},
    ByteOrderMark{{"\xFF\xFE\x00\x00", 4}, Encoding::utf32LittleEndian},
    ByteOrderMark{{"\x00\x00\xFE\xFF", 4}, Encoding::utf32BigEndian},
    ByteOrderMark{{"\xFF\xFE", 2}, Encoding::utf16LittleEndian},
    ByteOrderMark{{"\xFE\xFF", 2}, Encoding::utf16BigEndian},
};

struct EncodingName {
    std::string_view name;  ///< letters, in lower case, and digits
    Encoding encoding;
};

/// US-ASCII is read as ISO-8859-1, which it is a part of. Other legacy encodings are left out.
constexpr std::array encodingNames{
    EncodingName{"utf8", Encoding::utf8},
    EncodingName{"iso88591", Encoding::latin1},
    EncodingName{"latin1", Encoding::latin1},
    EncodingName{"l1", Encoding::latin1},
    EncodingName{"cp819", Encoding::latin1},
    EncodingName{"ibm819", Encoding::latin1},
    EncodingName{"usascii", Encoding::latin1},
    EncodingName{"ascii", Encoding::latin1},
    EncodingName{"us", Encoding::latin1},
    EncodingName{"iso646us", Encoding::latin1},
    EncodingName{"cp367", Encoding::latin1},
    EncodingName{"ansix341968", Encoding::latin1},
    EncodingName{"windows1252", Encoding::windows1252},
    EncodingName{"cp1252", Encoding::windows1252},
};

/// The name that an XML declaration gives, quotes taken off. A declaration is looked for at the very
/// start of the file only, and `encoding=` only before its first `?` or `>`.
std::optional<std::string_view> declaredName(std::string_view bytes) {
    if (!bytes.starts_with("<?xml")) return std::nullopt;
    std::string_view declaration = bytes.substr(0, bytes.find('>'));
    declaration = declaration.substr(0, declaration.find('?', 2));
    const std::string_view attribute = "encoding=";
    const std::size_t place = declaration.find(attribute);
    if (place == std::string_view::npos) return std::nullopt;
    const std::string_view quoted = bytes.substr(place + attribute.size());
    if (!quoted.starts_with('"') && !quoted.starts_with('\'')) return std::nullopt;
    const std::size_t end = quoted.find(quoted.front(), 1);
    if (end == std::string_view::npos) return std::nullopt;
    return quoted.substr(1, end - 1);
}

/// In windows-1252, what the bytes from 0x80 to 0x9F stand for; 0 for those that stand for nothing.
constexpr std::array<std::uint16_t, 32> windows1252Characters{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

/// Takes characters off encoded bytes, one at a time. Bytes at the end that are too few for a unit
/// are left alone.
class Decoder {
public:
    Decoder(Encoding encoding, std::string_view bytes) : _encoding(encoding), _bytes(bytes) {}

    std::size_t position() const { return _position; }
    bool atEnd() const { return _bytes.size() - _position < unitSize(); }

    /// Nothing when the bytes at the position stand for no character.
    std::optional<char32_t> next() {
        char32_t code = takeUnit();
        if (unitSize() == 2) return joinedSurrogates(code);
        if (_encoding == Encoding::windows1252 && code >= 0x80 && code < 0xA0) {
            code = windows1252Characters[code - 0x80];
            if (code == 0) return std::nullopt;
        }
        return isCharacter(code) ? std::optional(code) : std::nullopt;
    }

private:
    std::size_t unitSize() const {
        switch (_encoding) {
            case Encoding::utf8:
            case Encoding::latin1:
            case Encoding::windows1252:
                return 1;
            case Encoding::utf16LittleEndian:
            case Encoding::utf16BigEndian:
                return 2;
            case Encoding::utf32LittleEndian:
            case Encoding::utf32BigEndian:
                return 4;
        }
        return 1;
    }

    char32_t unitAt(std::size_t position) const {
        const bool littleEndian = _encoding == Encoding::utf16LittleEndian || _encoding == Encoding::utf32LittleEndian;
        char32_t unit = 0;
        for (std::size_t index = 0; index < unitSize(); ++index) {
            const std::size_t place = littleEndian ? unitSize() - 1 - index : index;
            unit = unit << 8 | static_cast<unsigned char>(_bytes[position + place]);
        }
        return unit;
    }

    char32_t takeUnit() {
        const char32_t unit = unitAt(_position);
        _position += unitSize();
        return unit;
    }

    /// A surrogate without its partner becomes U+FFFD, and the rest of the file is kept.
    char32_t joinedSurrogates(char32_t unit) {
        if (isLeadSurrogate(unit) && !atEnd() && isTrailSurrogate(unitAt(_position))) {
            return 0x10000 + ((unit & 0x3FF) << 10 | (takeUnit() & 0x3FF));
        }
        return isCharacter(unit) ? unit : replacementCharacter;
    }

    Encoding _encoding;
    std::string_view _bytes;
    std::size_t _position = 0;
};

const ByteOrderMark* findMark(std::string_view bytes) {
    const auto mark = std::find_if(byteOrderMarks.begin(), byteOrderMarks.end(),
                                   [&](const ByteOrderMark& candidate) { return bytes.starts_with(candidate.bytes); });
    return mark == byteOrderMarks.end() ? nullptr : &*mark;
}

/// Of a name, letters and digits alone count, in any case.
std::optional<Encoding> encodingCalled(std::string_view name) {
    std::string plain;
    for (const char character : name) {
        if (isLetter(character) || isDigit(character)) plain += lowerCase(character);
    }
    const auto known = std::find_if(encodingNames.begin(), encodingNames.end(),
                                    [&](const EncodingName& candidate) { return candidate.name == plain; });
    return known == encodingNames.end() ? std::nullopt : std::optional(known->encoding);
}

/// Nothing when some bytes stand for no character; then `offset` is theirs.
std::optional<std::string> transcoded(Encoding encoding, std::string_view bytes, std::size_t& offset) {
    std::string text;
    text.reserve(bytes.size());
    Decoder decoder(encoding, bytes);
    while (!decoder.atEnd()) {
        offset = decoder.position();
        const std::optional<char32_t> character = decoder.next();
        if (!character) return std::nullopt;
        appendUtf8(text, *character);
    }
    return text;
}

}  // namespace

std::optional<XmlText> XmlText::decode(std::string_view bytes, PropertyListError& fault) {
    XmlText text;
    if (const ByteOrderMark* mark = findMark(bytes)) {
        text._encoding = mark->encoding;
        text._markLength = mark->bytes.size();
    } else if (const auto name = declaredName(bytes)) {
        const std::optional<Encoding> encoding = encodingCalled(*name);
        if (!encoding) {
            fault = {"the declared encoding is none of UTF-8, ISO-8859-1, US-ASCII and windows-1252",
                     static_cast<std::size_t>(name->data() - bytes.data())};
            return std::nullopt;
        }
        text._encoding = *encoding;
    }
    text._view = bytes.substr(text._markLength);
    if (text._encoding == Encoding::utf8) return text;

    std::size_t offset = 0;
    text._own = transcoded(text._encoding, text._view, offset);
    if (text._own) return text;
    fault = {"these bytes stand for no character in the encoding of the file", text._markLength + offset};
    return std::nullopt;
}

std::size_t XmlText::fileOffset(std::size_t utf8Offset) const {
    if (!_own) return _markLength + utf8Offset;
    Decoder decoder(_encoding, _view);
    std::string character;
    for (std::size_t produced = 0; !decoder.atEnd();) {
        const std::size_t position = decoder.position();
        character.clear();
        appendUtf8(character, decoder.next().value_or(replacementCharacter));
        produced += character.size();
        if (produced > utf8Offset) return _markLength + position;
    }
    return _markLength + _view.size();
}

}  // namespace platform::property_list
