// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_lookup.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/property_list/same_key.h"
#include "platform/foundation/property_list/xml_reader.h"
#include "platform/foundation/property_list/xml_scanner.h"

namespace platform::property_list {

namespace {

using Verdict = PropertyListLookup::Verdict;
using NestedVerdict = PropertyListNestedLookup::Verdict;

/// Looks at the keys of one dictionary, and remembers where the values of some of them stand. Later
/// keys win over earlier ones.
class DictionaryWatch {
public:
    /// `places` has one place for each of the keys: that behind the key's end tag, or a null pointer.
    DictionaryWatch(std::span<const std::string_view> keys, std::span<const char*> places)
        : _keys(keys), _places(places) {
        forget();
    }

    void open() { _isOpened = true; }

    void forget() {
        _isOpened = _uidKeys = _otherKeys = _atWantedKey = false;
        std::ranges::fill(_places, nullptr);
    }

    void key(std::string_view text, const char* behind) {
        _atWantedKey = false;
        for (std::size_t index = 0; index < _keys.size(); ++index) {
            if (!isSameKey(text, _keys[index])) continue;
            _places[index] = behind;
            _atWantedKey = true;
        }
        if (!_otherKeys) (text == uidKey ? _uidKeys : _otherKeys) = true;
    }

    /// Whether the last key was one of those that are looked for.
    bool atWantedKey() const { return _atWantedKey; }

    /// Whether the object, which is well-formed, is a dictionary; `makeWhole` makes a value of it. One
    /// of a certain single key may stand for something else, depending on its value.
    template <class MakeWhole>
    bool isDictionary(MakeWhole makeWhole) const {
        if (!_isOpened || _otherKeys || !_uidKeys) return _isOpened;
        const std::optional<Value> whole = makeWhole();
        return whole && whole->dictionary();
    }

private:
    std::span<const std::string_view> _keys;
    std::span<const char*> _places;
    bool _isOpened;
    bool _uidKeys;
    bool _otherKeys;
    bool _atWantedKey;
};

/// Makes nothing. It shows the keys of the root dictionary to one watch, and to another, if there is
/// one, those of the dictionary under the key that the first looks for.
class Finder {
public:
    struct Node {};

    struct Items {
        void add(Node&&) {}
        Node finish() { return {}; }
    };

    class Entries {
    public:
        Entries(DictionaryWatch* watch, DictionaryWatch* below) : _watch(watch), _below(below) {}
        void key(std::string_view text, const char* behind) {
            if (!_watch) return;
            _watch->key(text, behind);
            if (_below && _watch->atWantedKey()) _below->forget();
        }
        void add(Node&&) {}
        Node finish() { return {}; }

    private:
        DictionaryWatch* _watch;  ///< null for a dictionary that is not looked at
        DictionaryWatch* _below;  ///< what it has seen counts no more when the key comes again
    };

    explicit Finder(DictionaryWatch& root, DictionaryWatch* nested = nullptr) : _root(root), _nested(nested) {}

    Items items() { return {}; }
    Entries entries(std::size_t depth) {
        if (depth == 1) return opened(&_root, _nested);
        const bool isNested = depth == 2 && _nested && _root.atWantedKey();
        return isNested ? opened(_nested, nullptr) : Entries(nullptr, nullptr);
    }

    Node boolean(bool) { return {}; }
    Node integer(Integer) { return {}; }
    Node real(double) { return {}; }
    Node date(Date) { return {}; }
    Node string(std::string_view) { return {}; }
    Node data(std::string_view) { return {}; }

private:
    static Entries opened(DictionaryWatch* watch, DictionaryWatch* below) {
        watch->open();
        return {watch, below};
    }

    DictionaryWatch& _root;
    DictionaryWatch* _nested;
};

/// Whether the file is well-formed; the finder has then seen all of it.
bool scan(std::string_view text, Finder finder) {
    return XmlScanner(text, finder).document().has_value();
}

bool isRootDictionary(const DictionaryWatch& root, std::string_view text) {
    return root.isDictionary([text] {
        PropertyListError never;
        return readXml(text, never);
    });
}

/// The text from behind the end tag of a key, which stands at a place in it.
std::string_view textFrom(const char* place, std::string_view text) {
    return text.substr(static_cast<std::size_t>(place - text.data()));
}

}  // namespace

Located<std::string_view> XmlLookup::locateInRoot(std::string_view key) const {
    const char* place = nullptr;
    DictionaryWatch root({&key, 1}, {&place, 1});
    if (!scan(_text, Finder(root))) return {Verdict::malformed};
    if (!isRootDictionary(root, _text)) return {Verdict::noDictionary};
    if (!place) return {Verdict::absent};
    return {Verdict::found, textFrom(place, _text)};
}

NestedLocated<std::string_view> XmlLookup::locateNested(std::string_view outerKey, std::string_view innerKey) const {
    const char* outer = nullptr;
    const char* inner = nullptr;
    DictionaryWatch root({&outerKey, 1}, {&outer, 1});
    DictionaryWatch nested({&innerKey, 1}, {&inner, 1});
    if (!scan(_text, Finder(root, &nested))) return {NestedVerdict::malformed};
    if (!isRootDictionary(root, _text)) return {NestedVerdict::noDictionary};
    if (!outer) return {NestedVerdict::outerAbsent};
    if (!nested.isDictionary([&] { return readXmlObject(textFrom(outer, _text)); })) {
        return {NestedVerdict::outerNoDictionary};
    }
    if (!inner) return {NestedVerdict::innerAbsent};
    return {NestedVerdict::found, textFrom(inner, _text)};
}

std::optional<Dictionary> XmlLookup::readInRoot(std::span<const std::string_view> keys) const {
    std::vector<const char*> places(keys.size());
    DictionaryWatch root(keys, places);
    if (!scan(_text, Finder(root)) || !isRootDictionary(root, _text)) return std::nullopt;
    std::vector<Dictionary::Entry> entries;
    for (std::size_t index = 0; index < keys.size(); ++index) {
        if (places[index]) entries.push_back({std::string(keys[index]), value(textFrom(places[index], _text))});
    }
    return Dictionary(std::move(entries), Dictionary::Duplicates::firstWins);
}

Value XmlLookup::value(Place place) const {
    return readXmlObject(place).value_or(Null());
}

}  // namespace platform::property_list
