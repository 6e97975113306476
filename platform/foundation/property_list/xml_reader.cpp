// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_reader.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/base64.h"
#include "platform/foundation/property_list/xml_scanner.h"

namespace platform::property_list {

namespace {

/// Makes the values that a property list says.
class Builder {
public:
    using Node = Value;

    class Items {
    public:
        void add(Value&& item) { _items.push_back(std::move(item)); }
        Value finish() { return Value(std::move(_items)); }

    private:
        Array _items;
    };

    class Entries {
    public:
        void key(std::string_view text, const char*) {
            if (_entries.empty()) _entries.reserve(fewEntries);
            _entries.push_back({std::string(text), Value()});
        }
        void add(Value&& value) { _entries.back().value = std::move(value); }

        Value finish() {
            Dictionary dictionary(std::move(_entries), Dictionary::Duplicates::lastWins);
            const Value* number = dictionary.size() == 1 ? dictionary.find(uidKey) : nullptr;
            if (number && (number->integer() || number->real())) {
                return Uid{static_cast<std::uint32_t>(integerValue(*number))};
            }
            return Value(std::move(dictionary));
        }

    private:
        static constexpr std::size_t fewEntries = 8;
        std::vector<Dictionary::Entry> _entries;
    };

    Items items() { return {}; }
    Entries entries(std::size_t) { return {}; }

    Value boolean(bool flag) { return flag; }
    Value integer(Integer number) { return number; }
    Value real(double number) { return number; }
    Value date(Date date) { return date; }
    Value string(std::string_view text) { return text; }
    Value data(std::string_view base64) { return decodeBase64(base64); }
};

/// Makes nothing, but remembers where the values of some of the root dictionary's keys stand. Later keys win
/// over earlier ones.
class KeyFinder {
public:
    struct Node {};

    struct Items {
        void add(Node&&) {}
        Node finish() { return {}; }
    };

    class Entries {
    public:
        explicit Entries(KeyFinder* finder) : _finder(finder) {}
        void key(std::string_view text, const char* behind) {
            if (_finder) _finder->see(text, behind);
        }
        void add(Node&&) {}
        Node finish() { return {}; }

    private:
        KeyFinder* _finder;  ///< null for a dictionary further in
    };

    explicit KeyFinder(std::span<const std::string_view> keys) : _keys(keys), _places(keys.size()) {}

    Items items() { return {}; }
    Entries entries(std::size_t depth) {
        if (depth == 1) _rootIsDictionary = true;
        return Entries(depth == 1 ? this : nullptr);
    }

    Node boolean(bool) { return {}; }
    Node integer(Integer) { return {}; }
    Node real(double) { return {}; }
    Node date(Date) { return {}; }
    Node string(std::string_view) { return {}; }
    Node data(std::string_view) { return {}; }

    bool rootIsDictionary() const { return _rootIsDictionary; }
    /// Whether that dictionary has only the key of one that stands for something else, depending on the value.
    bool mayBeUid() const { return _uidKeys && !_otherKeys; }
    /// For each of the keys, the place behind its end tag, or a null pointer.
    std::span<const char* const> places() const { return _places; }

private:
    void see(std::string_view text, const char* behind) {
        const auto found = std::ranges::find(_keys, text);
        if (found != _keys.end()) _places[static_cast<std::size_t>(found - _keys.begin())] = behind;
        (text == uidKey ? _uidKeys : _otherKeys) = true;
    }

    std::span<const std::string_view> _keys;
    std::vector<const char*> _places;
    bool _rootIsDictionary = false;
    bool _uidKeys = false;
    bool _otherKeys = false;
};

}  // namespace

std::optional<Value> readXml(std::string_view text, PropertyListError& fault) {
    Builder builder;
    XmlScanner<Builder> scanner(text, builder);
    std::optional<Value> root = scanner.document();
    if (!root) fault = scanner.fault();
    return root;
}

std::optional<Dictionary> readXmlRootKeys(std::string_view text, std::span<const std::string_view> keys) {
    KeyFinder finder(keys);
    if (!XmlScanner(text, finder).document() || !finder.rootIsDictionary()) return std::nullopt;
    PropertyListError unused;
    if (finder.mayBeUid() && !readXml(text, unused)->dictionary()) return std::nullopt;
    std::vector<Dictionary::Entry> entries;
    for (std::size_t index = 0; index < keys.size(); ++index) {
        const char* const place = finder.places()[index];
        if (!place) continue;
        Builder builder;
        XmlScanner scanner(text.substr(static_cast<std::size_t>(place - text.data())), builder);
        entries.push_back({std::string(keys[index]), scanner.object().value_or(Null())});
    }
    return Dictionary(std::move(entries), Dictionary::Duplicates::firstWins);
}

}  // namespace platform::property_list
