// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <variant>

#include "platform/foundation/base64.h"
#include "platform/foundation/bytes.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/property_list/xml_reader.h"
#include "platform/foundation/property_list/xml_scalars.h"
#include "platform/foundation/utf8.h"

namespace platform {

namespace property_list {

namespace {

/// XML has no way to refer to an object twice: what is shared is written again wherever it is
/// referred to, and a few hundred bytes can unfold to more than any memory. The platform gives up on
/// eleven doublings and one more; this many values in containers written already is where we do.
constexpr std::size_t mostRepeatedValues = 4096;

/// The same for the text and data that is written more than once.
constexpr std::size_t mostRepeatedBytes = std::size_t{64} << 20;

/// Shorter text is not worth keeping account of.
constexpr std::size_t shortText = 1024;

/// Knows what has been written, as far as it can come again.
class RepetitionAccount {
public:
    /// False when there is too much repetition.
    bool value() { return _repeatedContainers == 0 || ++_repeatedValues <= mostRepeatedValues; }

    /// Says that text or data is written that only `sharer` refers to, or others as well.
    template <class Content>
    bool content(const std::shared_ptr<const Content>& sharer) {
        const bool again = _repeatedContainers > 0 || (sharer->size() > shortText && sharer.use_count() > 1 &&
                                                       !_written.insert(sharer.get()).second);
        return !again || repeat(sharer->size());
    }

    bool key(std::string_view text) { return _repeatedContainers == 0 || repeat(text.size()); }

    /// Goes around the members of a container.
    template <class Container>
    void enter(const std::shared_ptr<const Container>& container) {
        if (_repeatedContainers > 0 || (container.use_count() > 1 && !_written.insert(container.get()).second)) {
            ++_repeatedContainers;
        }
    }
    void leave() {
        if (_repeatedContainers > 0) --_repeatedContainers;
    }

private:
    bool repeat(std::size_t bytes) { return (_repeatedBytes += bytes) <= mostRepeatedBytes; }

    std::unordered_set<const void*> _written;
    std::size_t _repeatedContainers = 0;  ///< around the place, from the outermost repeated one on
    std::size_t _repeatedValues = 0;
    std::size_t _repeatedBytes = 0;
};

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
    RepetitionAccount _account;
};

}  // namespace

}  // namespace property_list

PropertyListWriting writeXmlPropertyList(const Value& root) {
    return property_list::XmlWriter().write(root);
}

}  // namespace platform
