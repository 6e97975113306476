// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_characters.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/foundation/ascii.h"
#include "platform/foundation/bytes.h"
#include "platform/foundation/utf8.h"

namespace platform::property_list {

namespace {

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

struct NamedReference {
    std::string_view spelling;
    char character;
};

constexpr std::array namedReferences{
    NamedReference{"&lt;", '<'},    NamedReference{"&gt;", '>'},   NamedReference{"&amp;", '&'},
    NamedReference{"&apos;", '\''}, NamedReference{"&quot;", '"'},
};

/// Takes text apart piece by piece. Text in one piece is never copied.
class CharacterReader {
public:
    CharacterReader(const char* begin, const char* end, std::string& scratch)
        : _begin(begin), _position(begin), _pieceBegin(begin), _end(end), _scratch(scratch) {}

    Characters read() {
        _scratch.clear();
        while (!_complaint && (_position = findSpecial()) != _end && !atEndOfText()) {
            takePiece();
            if (*_position == '&') {
                takeReference();
            } else {
                takeCharacterData();
            }
            _pieceBegin = _position;
        }
        return _complaint ? Characters{{}, _position, _complaint} : finished();
    }

private:
    const char* findSpecial() const {
        return std::find_if(_position, _end, [](char character) { return character == '<' || character == '&'; });
    }

    bool atEndOfText() const { return *_position == '<' && (_end - _position < 2 || _position[1] != '!'); }

    std::string_view rest() const { return between(_position, _end); }

    void takePiece() {
        _isCopied = true;
        _scratch.append(_pieceBegin, _position);
    }

    void takeReference() {
        if (rest().starts_with("&#")) return takeNumericReference();
        const auto named = std::find_if(namedReferences.begin(), namedReferences.end(), [this](const auto& reference) {
            return rest().starts_with(reference.spelling);
        });
        if (named == namedReferences.end()) return complain("unknown reference, or a bare &");
        _scratch += named->character;
        _position += named->spelling.size();
    }

    /// `&#;` and `&#x;` are U+0000. Zeros in front count as digits.
    void takeNumericReference() {
        constexpr std::size_t mostDigits = 8;
        const bool hexadecimal = rest().starts_with("&#x");
        const std::string_view behind = rest().substr(hexadecimal ? 3 : 2);
        const std::size_t length = behind.substr(0, mostDigits + 1).find(';');
        if (length == std::string_view::npos)
            return complain("a numeric reference of more than 8 digits, or without ;");
        char32_t code = 0;
        for (const char character : behind.substr(0, length)) {
            const unsigned digit = digitValue(character);
            if (digit >= (hexadecimal ? 16u : 10u))
                return complain("a numeric reference with a character that is no digit");
            code = code * (hexadecimal ? 16 : 10) + digit;
        }
        if (!isCharacter(code)) return complain("a reference to no character");
        appendUtf8(_scratch, code);
        _position = behind.data() + length + 1;
    }

    void takeCharacterData() {
        constexpr std::string_view opening = "<![CDATA[";
        constexpr std::string_view closing = "]]>";
        if (!rest().starts_with(opening)) return complain("a comment or declaration inside text");
        const std::string_view content = rest().substr(opening.size());
        const std::size_t length = content.find(closing);
        if (length == std::string_view::npos) return complain("a CDATA section that never ends");
        _scratch += content.substr(0, length);
        _position = content.data() + length + closing.size();
    }

    Characters finished() {
        std::string_view text = between(_pieceBegin, _position);
        if (_isCopied) text = _scratch.append(text);
        if (const std::size_t invalid = findInvalidUtf8(text); invalid != text.size()) {
            return {{}, _isCopied ? _begin : _begin + invalid, "text that is not valid UTF-8"};
        }
        constexpr std::string_view mark = "\xEF\xBB\xBF";
        if (text.starts_with(mark)) text.remove_prefix(mark.size());
        return {text, _position, nullptr};
    }

    void complain(const char* complaint) { _complaint = complaint; }

    const char* const _begin;
    const char* _position;
    const char* _pieceBegin;
    const char* const _end;
    std::string& _scratch;
    bool _isCopied = false;
    const char* _complaint = nullptr;
};

}  // namespace

Characters readCharacters(const char* begin, const char* end, std::string& scratch) {
    return CharacterReader(begin, end, scratch).read();
}

}  // namespace platform::property_list
