// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_lookup.h"

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

/// Makes nothing, and tells `visit(text, behind)` of each root key and of the place behind its end
/// tag. Later keys win over earlier ones.
template <class Visit>
class Finder {
public:
    struct Node {};

    struct Items {
        void add(Node&&) {}
        Node finish() { return {}; }
    };

    class Entries {
    public:
        explicit Entries(Finder* root) : _root(root) {}
        void key(std::string_view text, const char* behind) {
            if (_root) _root->rootKey(text, behind);
        }
        void add(Node&&) {}
        Node finish() { return {}; }

    private:
        Finder* _root;  ///< when this is the root dictionary, else a null pointer
    };

    explicit Finder(Visit visit) : _visit(std::move(visit)) {}

    Items items() { return {}; }
    Entries entries(std::size_t depth) {
        if (depth != 1) return Entries(nullptr);
        _rootIsDictionary = true;
        return Entries(this);
    }

    Node boolean(bool) { return {}; }
    Node integer(Integer) { return {}; }
    Node real(double) { return {}; }
    Node date(Date) { return {}; }
    Node string(std::string_view) { return {}; }
    Node data(std::string_view) { return {}; }

    bool rootIsDictionary() const { return _rootIsDictionary; }
    /// A root dictionary of this one key may stand for something else, depending on its value.
    bool rootHoldsOnlyUidKey() const { return _uidKeys && !_otherKeys; }

private:
    void rootKey(std::string_view text, const char* behind) {
        _visit(text, behind);
        if (_otherKeys) return;
        (text == uidKey ? _uidKeys : _otherKeys) = true;
    }

    Visit _visit;
    bool _rootIsDictionary = false;
    bool _uidKeys = false;
    bool _otherKeys = false;
};

/// Whether a well-formed object that the finder has seen is a dictionary; `makeWhole` makes a value
/// of it.
template <class Visit, class MakeWhole>
bool isDictionary(const Finder<Visit>& finder, std::string_view text, MakeWhole makeWhole) {
    if (!finder.rootIsDictionary()) return false;
    if (!finder.rootHoldsOnlyUidKey()) return true;
    const std::optional<Value> whole = makeWhole(text);
    return whole && whole->dictionary();
}

std::optional<Value> readRoot(std::string_view text) {
    Fault never;
    return readXml(text, never);
}

/// The text from behind the end tag of a key, which stands at a place in it.
std::string_view textFrom(const char* place, std::string_view text) {
    return text.substr(static_cast<std::size_t>(place - text.data()));
}

/// One key of the dictionary that `scan` is to read with the finder that it is given.
template <class Scan, class MakeWhole>
Located<std::string_view> locate(std::string_view text, std::string_view key, Scan scan, MakeWhole makeWhole) {
    const char* place = nullptr;
    Finder finder([&](std::string_view found, const char* behind) {
        if (found == key) place = behind;
    });
    if (!scan(finder)) return {Verdict::malformed};
    if (!isDictionary(finder, text, makeWhole)) return {Verdict::noDictionary};
    if (!place) return {Verdict::absent};
    return {Verdict::found, textFrom(place, text)};
}

}  // namespace

Located<std::string_view> XmlLookup::locateInRoot(std::string_view key) const {
    const auto scan = [this](auto& finder) { return XmlScanner(_text, finder).document().has_value(); };
    return locate(_text, key, scan, readRoot);
}

Located<std::string_view> XmlLookup::locateIn(Place dictionary, std::string_view key) const {
    const auto scan = [&](auto& finder) { return XmlScanner(dictionary, finder).object().has_value(); };
    return locate(dictionary, key, scan, readXmlObject);
}

std::optional<Dictionary> XmlLookup::readInRoot(std::span<const std::string_view> keys) const {
    std::vector<const char*> places(keys.size());
    Finder finder([&](std::string_view found, const char* behind) {
        for (std::size_t index = 0; index < keys.size(); ++index) {
            if (isSameKey(found, keys[index])) places[index] = behind;
        }
    });
    if (!XmlScanner(_text, finder).document() || !isDictionary(finder, _text, readRoot)) return std::nullopt;
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
