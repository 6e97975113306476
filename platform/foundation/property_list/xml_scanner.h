// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/foundation/ascii.h"
#include "platform/foundation/bytes.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/property_list/xml_characters.h"
#include "platform/foundation/property_list/xml_scalars.h"
#include "platform/foundation/property_list/xml_tags.h"

namespace platform::property_list {

/// Validates an XML property list and hands what it finds to a maker, so that the rules of the
/// format stand once for every way of reading. It is recursive; the bounds on nesting bound its
/// stack.
///
/// A maker has a type `Node`, what it makes of one object, and
///     Node boolean(bool), integer(Integer), real(double), date(Date),
///     Node string(std::string_view text)       UTF-8, valid only during the call
///     Node data(std::string_view base64)
///     Items items()                            collects an array
///     Entries entries(std::size_t depth)       collects a dictionary; 1 for the outermost container
/// `Items` and `Entries` have `void add(Node&&)` and `Node finish()`, and `Entries` is told each key
/// before its value: `void key(std::string_view text, const char* behind)`, where `behind` is the
/// place in the file after the key's end tag.
template <class Maker>
class XmlScanner {
public:
    using Node = typename Maker::Node;

    XmlScanner(std::string_view text, Maker& maker)
        : _begin(text.data()), _position(text.data()), _end(text.data() + text.size()), _maker(maker) {}

    /// Reads the whole file. Nothing when it is malformed; then `fault()` says why.
    std::optional<Node> document() {
        Node root{};
        return skipProlog() && element(readTag(), root) ? std::optional(std::move(root)) : std::nullopt;
    }

    /// Reads one object, and what may stand before it, at the beginning of a text that is known to be well-formed
    /// from there on.
    std::optional<Node> object() {
        Node node{};
        return nextMarkup() == Markup::opening && element(readTag(), node) ? std::optional(std::move(node))
                                                                           : std::nullopt;
    }

    /// Offsets count from the beginning of the text.
    const PropertyListError& fault() const { return _fault; }

private:
    /// What stands next between elements; `closing` and `opening` leave the position at the `<`.
    enum class Markup { opening, closing, malformed };

    // -- Between elements ------------------------------------------------------------------------

    std::string_view rest() const { return {_position, static_cast<std::size_t>(_end - _position)}; }

    void skipBlanks() {
        while (_position != _end && isBlank(*_position))
            ++_position;
    }

    /// Stops at the `<` of the first element. Here alone a comment cannot be empty: its end is looked
    /// for behind its first character.
    bool skipProlog() {
        for (;;) {
            skipBlanks();
            if (atEnd()) return complain("there is no element");
            if (*_position != '<') return complain("text before the first element, so this is no XML property list");
            if (rest().starts_with("<?")) {
                if (!skipBehind("?>", 2, "a processing instruction that never ends")) return false;
            } else if (rest().starts_with("<!--")) {
                if (!skipBehind("-->", 5, "a comment that never ends")) return false;
            } else if (rest().starts_with("<!")) {
                if (!skipDocumentType()) return false;
            } else {
                return true;
            }
        }
    }

    bool skipDocumentType() {
        if (!rest().starts_with("<!DOCTYPE")) return complain("a declaration other than <!DOCTYPE");
        const char* const close = findByte(_position, _end, '>');
        const char* const subset = findByte(_position, close, '[');
        if (subset != close) return complainAt(subset, "a document type with an internal subset");
        if (close == _end) return complain("a document type declaration that never ends");
        _position = close + 1;
        return true;
    }

    /// Moves behind the first `closing` that begins at least `from` bytes on.
    bool skipBehind(std::string_view closing, std::size_t from, const char* complaint) {
        const std::size_t place = rest().find(closing, from);
        if (place == std::string_view::npos) return complain(complaint);
        _position += place + closing.size();
        return true;
    }

    Markup nextMarkup() {
        for (;;) {
            skipBlanks();
            if (_end - _position < 2) return malformed("the file ends inside an element");
            if (*_position != '<') return malformed("text between elements");
            switch (_position[1]) {
                case '/':
                    return Markup::closing;
                case '?':
                    if (!skipBehind("?>", 2, "a processing instruction that never ends")) return Markup::malformed;
                    break;
                case '!':
                    if (!rest().starts_with("<!--")) return malformed("a declaration between elements");
                    if (!skipBehind("-->", 4, "a comment that never ends")) return Markup::malformed;
                    break;
                default:
                    return Markup::opening;
            }
        }
    }

    // -- Elements --------------------------------------------------------------------------------

    /// Reads the tag at the position and moves behind it.
    Tag readTag() {
        const TagReading reading = readOpeningTag(_position, _end);
        if (reading.tag.element == Element::unknown) {
            complain(describeBadTag(_position, _end));
        } else {
            _position = reading.end;
        }
        return reading.tag;
    }

    bool element(Tag tag, Node& node) {
        switch (tag.element) {
            case Element::dictionary:
                return tag.selfClosing ? make(node, entries().finish()) : dictionary(node);
            case Element::array:
                return tag.selfClosing ? make(node, _maker.items().finish()) : array(node);
            case Element::string:
                return string(tag, "</string>", node);
            case Element::key:
                return string(tag, "</key>", node);
            case Element::isTrue:
                return boolean(tag, "</true>", true, node);
            case Element::isFalse:
                return boolean(tag, "</false>", false, node);
            case Element::integer:
                return hasContent(tag) && integer(node);
            case Element::real:
                return hasContent(tag) && real(node);
            case Element::date:
                return hasContent(tag) && date(node);
            case Element::data:
                return hasContent(tag) && data(node);
            case Element::plist:
                return hasContent(tag) && plist(node);
            case Element::unknown:
                return false;
        }
        return false;
    }

    static bool make(Node& node, Node&& made) {
        node = std::move(made);
        return true;
    }

    bool hasContent(Tag tag) { return !tag.selfClosing || complain("an empty element of a kind that needs content"); }

    /// Takes an end tag off, spelled `</name>` or with blanks before its `>`.
    template <std::size_t size>
    bool endTag(const char (&spelling)[size]) {
        constexpr std::size_t length = size - 1;
        if (static_cast<std::size_t>(_end - _position) >= length && !std::memcmp(_position, spelling, length)) {
            _position += length;
            return true;
        }
        return unusualEndTag({spelling, length});
    }

    bool unusualEndTag(std::string_view spelling) {
        const std::string_view name = spelling.substr(0, spelling.size() - 1);
        if (!rest().starts_with(name)) return complain("expected " + std::string(spelling));
        _position += name.size();
        skipBlanks();
        if (!rest().starts_with('>')) return complain("expected the > of " + std::string(spelling));
        ++_position;
        return true;
    }

    /// A `<plist>` holds exactly one object, and stands for it. It may stand wherever an object may.
    bool plist(Node& node) {
        if (_plists == greatestDepth) return complain("more than 512 nested <plist> elements");
        ++_plists;
        if (!valueOr("a <plist> without an object", node)) return false;
        switch (nextMarkup()) {
            case Markup::opening:
                return complain("a <plist> with more than one object");
            case Markup::malformed:
                return false;
            case Markup::closing:
                break;
        }
        --_plists;
        return endTag("</plist>");
    }

    /// The object that has to come next.
    bool valueOr(const char* complaint, Node& node) {
        switch (nextMarkup()) {
            case Markup::opening:
                return element(readTag(), node);
            case Markup::closing:
                return complain(complaint);
            case Markup::malformed:
                return false;
        }
        return false;
    }

    // -- Containers ------------------------------------------------------------------------------

    auto entries() { return _maker.entries(_depth + 1); }

    bool deepen() {
        if (_depth == greatestDepth) return complain(tooDeep);
        ++_depth;
        return true;
    }

    bool dictionary(Node& node) {
        auto entries = this->entries();
        if (!deepen()) return false;
        Markup next = nextMarkup();
        for (; next == Markup::opening; next = nextMarkup()) {
            if (!entry(entries)) return false;
        }
        --_depth;
        return next == Markup::closing && endTag("</dict>") && make(node, entries.finish());
    }

    template <class Entries>
    bool entry(Entries& entries) {
        const char* const begin = _position;
        const Tag tag = readTag();
        if (tag.element == Element::unknown) return false;
        if (tag.element != Element::key) return complainAt(begin, "a value without a key in a dictionary");
        std::string_view key;
        if (!characters(tag, "</key>", key)) return false;
        entries.key(key, _position);
        Node value{};
        if (!valueOr("a key without a value", value)) return false;
        entries.add(std::move(value));
        return true;
    }

    bool array(Node& node) {
        auto items = _maker.items();
        if (!deepen()) return false;
        Markup next = nextMarkup();
        for (; next == Markup::opening; next = nextMarkup()) {
            Node item{};
            if (!element(readTag(), item)) return false;
            items.add(std::move(item));
        }
        --_depth;
        return next == Markup::closing && endTag("</array>") && make(node, items.finish());
    }

    // -- Scalars ---------------------------------------------------------------------------------

    /// The text of an element up to and with its end tag.
    template <std::size_t size>
    bool characters(Tag tag, const char (&end)[size], std::string_view& text) {
        if (tag.selfClosing) return true;
        const char* const stop = findStop<StopSet<'<', '&'>>(_position, _end);
        if (_end - stop >= 2 && stop[0] == '<' && stop[1] == '/') {
            text = {_position, static_cast<std::size_t>(stop - _position)};
            _position = stop;
            return endTag(end);
        }
        return unusualCharacters(text) && endTag(end);
    }

    bool unusualCharacters(std::string_view& text) {
        const Characters characters = readCharacters(_position, _end, _scratch);
        _position = characters.end;
        text = characters.text;
        return !characters.complaint || complain(characters.complaint);
    }

    template <std::size_t size>
    bool string(Tag tag, const char (&end)[size], Node& node) {
        std::string_view text;
        return characters(tag, end, text) && make(node, _maker.string(text));
    }

    template <std::size_t size>
    bool boolean(Tag tag, const char (&end)[size], bool flag, Node& node) {
        return (tag.selfClosing || endTag(end)) && make(node, _maker.boolean(flag));
    }

    bool integer(Node& node) {
        const std::optional<Parsed<Integer>> parsed = parseInteger(_position, _end);
        if (!parsed) return complain("an <integer> that is none, or out of the range of 64 bits");
        _position = parsed->end;
        return endTag("</integer>") && make(node, _maker.integer(parsed->number));
    }

    bool real(Node& node) {
        const char* const begin = _position;
        std::string_view text;
        if (!characters(Tag{Element::real, false}, "</real>", text)) return false;
        const std::optional<double> number = parseReal(text);
        if (!number) return complainAt(begin, "a <real> that is no number");
        return make(node, _maker.real(*number));
    }

    bool date(Node& node) {
        const std::optional<Parsed<Date>> parsed = parseDate(_position, _end);
        if (!parsed) return complain("a <date> that is not of the form YYYY-MM-DDThh:mm:ssZ");
        _position = parsed->end;
        return endTag("</date>") && make(node, _maker.date(parsed->number));
    }

    bool data(Node& node) {
        const char* const begin = _position;
        _position = findStop<StopSet<'<'>>(begin, _end);
        if (!atEnd() && *_position != '<') return complain("a byte outside ASCII in <data>");
        const std::string_view base64(begin, static_cast<std::size_t>(_position - begin));
        return endTag("</data>") && make(node, _maker.data(base64));
    }

    // -- Complaints ------------------------------------------------------------------------------

    bool atEnd() const { return _position == _end; }

    [[gnu::cold, gnu::noinline]] bool complain(std::string reason) { return complainAt(_position, std::move(reason)); }

    [[gnu::cold, gnu::noinline]] bool complainAt(const char* place, std::string reason) {
        _fault = {std::move(reason), static_cast<std::size_t>(place - _begin)};
        return false;
    }

    Markup malformed(const char* reason) {
        complain(reason);
        return Markup::malformed;
    }

    const char* const _begin;
    const char* _position;
    const char* const _end;
    Maker& _maker;
    std::size_t _depth = 0;
    std::size_t _plists = 0;
    std::string _scratch;
    PropertyListError _fault;
};

}  // namespace platform::property_list
