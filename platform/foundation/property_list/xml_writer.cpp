// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/foundation/base64.h"
#include "platform/foundation/bytes.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/property_list/xml_reader.h"
#include "platform/foundation/property_list/xml_scalars.h"
#include "platform/foundation/repetition_account.h"
#include "platform/foundation/utf8.h"

namespace platform {

namespace property_list {

namespace {

/// The platform gives up on eleven doublings and one more; this many values in containers written already is where we
/// do. Text shorter than that is not worth keeping account of.
constexpr RepetitionAccount::Limits mostRepetition = {
    .values = 4096, .bytes = std::size_t{64} << 20, .shortText = 1024};

class XmlWriter {
public:
    PropertyListWriting write(const Value& root) {
        constexpr std::size_t usualSize = 4096;
        _out.reserve(usualSize);
        _out =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n";
        if (!value(root)) return {std::nullopt, _reason};
        _out += "</plist>\n";
        return {std::move(_out), {}};
    }

private:
    bool value(const Value& value) {
        if (!_account.value()) return refuse("containers that are shared too often");
        return std::visit([this](const auto& content) { return element(content); }, value.storage());
    }

    bool element(Null) { return refuse("null"); }

    bool element(bool flag) { return line(flag ? "<true/>" : "<false/>"); }

    bool element(Integer number) {
        indent();
        _out += "<integer>";
        appendInteger(_out, number);
        return endLine("</integer>");
    }

    bool element(double number) {
        indent();
        _out += "<real>";
        appendReal(_out, number);
        return endLine("</real>");
    }

    bool element(Date date) {
        indent();
        _out += "<date>";
        if (!appendDate(_out, date)) return refuse("a date that lies in no year of 32 bits");
        return endLine("</date>");
    }

    bool element(Uid uid) {
        if (_depth == greatestDepth) return refuse(tooDeep);
        line("<dict>");
        ++_depth;
        key(uidKey);
        element(Integer::fromUnsigned(uid.number));
        --_depth;
        return line("</dict>");
    }

    bool element(const std::shared_ptr<const std::string>& text) {
        if (!_account.content(text)) return refuse("text that is repeated too often");
        indent();
        _out += "<string>";
        return escaped(*text) && endLine("</string>");
    }

    /// Deeper down the lines get shorter, until they stop moving to the right.
    bool element(const std::shared_ptr<const Data>& data) {
        if (!_account.content(data)) return refuse("data that is repeated too often");
        constexpr std::size_t deepestIndent = 8;
        const std::size_t tabs = std::min(_depth, deepestIndent);
        line("<data>");
        appendBase64Lines(_out, *data, 76 - 8 * tabs, tabs);
        return line("</data>");
    }

    bool element(const std::shared_ptr<const Set>&) { return refuse("a set"); }

    bool element(const std::shared_ptr<const Array>& array) {
        if (array->empty()) return line("<array/>");
        return enter(array, "<array>") &&
               std::all_of(array->begin(), array->end(), [this](const Value& item) { return value(item); }) &&
               leave("</array>");
    }

    bool element(const std::shared_ptr<const Dictionary>& dictionary) {
        if (!dictionary->oddEntries().empty()) return refuse("a key that is no string");
        if (dictionary->empty()) return line("<dict/>");
        return enter(dictionary, "<dict>") &&
               std::all_of(dictionary->begin(), dictionary->end(),
                           [this](const auto& entry) { return key(entry.key) && value(entry.value); }) &&
               leave("</dict>");
    }

    template <class Container>
    bool enter(const std::shared_ptr<const Container>& container, std::string_view tag) {
        if (_depth == greatestDepth) return refuse(tooDeep);
        line(tag);
        ++_depth;
        _account.enter(container);
        return true;
    }

    bool leave(std::string_view tag) {
        _account.leave();
        --_depth;
        return line(tag);
    }

    bool key(std::string_view text) {
        if (!_account.key(text)) return refuse("keys that are repeated too often");
        indent();
        _out += "<key>";
        return escaped(text) && endLine("</key>");
    }

    bool escaped(std::string_view text) {
        const char* position = text.data();
        const char* const end = position + text.size();
        bool validated = false;
        for (;;) {
            const char* const stop =
                validated ? std::find_if(position, end, isMarkup) : findStop<StopSet<'<', '>', '&'>>(position, end);
            _out.append(position, stop);
            if (stop == end) return true;
            if (isMarkup(*stop)) {
                _out += *stop == '<' ? "&lt;" : *stop == '>' ? "&gt;" : "&amp;";
                position = stop + 1;
            } else {
                if (!isValidUtf8(text)) return refuse("text that is not valid UTF-8");
                validated = true;
                position = stop;
            }
        }
    }

    static bool isMarkup(char character) { return character == '<' || character == '>' || character == '&'; }

    void indent() { _out.append(_depth, '\t'); }

    bool endLine(std::string_view tag) {
        _out += tag;
        _out += '\n';
        return true;
    }

    bool line(std::string_view tag) {
        indent();
        return endLine(tag);
    }

    bool refuse(const char* what) {
        _reason = what;
        return false;
    }

    std::string _out;
    std::string _reason;
    std::size_t _depth = 0;
    RepetitionAccount _account{mostRepetition};
};

}  // namespace

constexpr bool isBeyondXml(char32_t code) {
    return (code < U' ' && code != U'\t' && code != U'\n') || code == 0xFFFE || code == 0xFFFF;
}

}  // namespace property_list

std::optional<char32_t> characterBeyondXml(std::string_view text) {
    while (!text.empty()) {
        const Utf8Character character = firstUtf8Character(text);
        if (property_list::isBeyondXml(character.code)) return character.code;
        text.remove_prefix(character.length);
    }
    return std::nullopt;
}

PropertyListWriting writeXmlPropertyList(const Value& root) {
    return property_list::XmlWriter().write(root);
}

}  // namespace platform
