// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_lookup.h"

#include <optional>

#include "platform/foundation/property_list/xml_reader.h"
#include "platform/foundation/property_list/xml_scanner.h"

namespace platform::property_list {

namespace {

using Verdict = PropertyListLookup::Verdict;

/// Makes nothing, and remembers where in the file the value of one root key stands. Later keys
/// win over earlier ones.
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

    explicit Finder(std::string_view key) : _key(key) {}

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
    /// Behind the end tag of the key, or a null pointer when the key was not there.
    const char* placeOfValue() const { return _placeOfValue; }

private:
    void rootKey(std::string_view text, const char* behind) {
        if (text == _key) _placeOfValue = behind;
        if (_otherKeys) return;
        (text == uidKey ? _uidKeys : _otherKeys) = true;
    }

    std::string_view _key;
    const char* _placeOfValue = nullptr;
    bool _rootIsDictionary = false;
    bool _uidKeys = false;
    bool _otherKeys = false;
};

/// The verdict on a well-formed object that the finder has seen; `makeWhole` makes a value of it.
template <class MakeWhole>
Located<std::string_view> located(const Finder& finder, std::string_view text, MakeWhole makeWhole) {
    if (!finder.rootIsDictionary()) return {Verdict::noDictionary};
    if (finder.rootHoldsOnlyUidKey()) {
        const std::optional<Value> whole = makeWhole(text);
        if (!whole || !whole->dictionary()) return {Verdict::noDictionary};
    }
    if (!finder.placeOfValue()) return {Verdict::absent};
    return {Verdict::found, text.substr(static_cast<std::size_t>(finder.placeOfValue() - text.data()))};
}

}  // namespace

Located<std::string_view> XmlLookup::locateInRoot(std::string_view key) const {
    Finder finder(key);
    if (!XmlScanner<Finder>(_text, finder).document()) return {Verdict::malformed};
    return located(finder, _text, [](std::string_view text) {
        Fault never;
        return readXml(text, never);
    });
}

Located<std::string_view> XmlLookup::locateIn(Place dictionary, std::string_view key) const {
    Finder finder(key);
    if (!XmlScanner<Finder>(dictionary, finder).object()) return {Verdict::malformed};
    return located(finder, dictionary, readXmlObject);
}

Value XmlLookup::value(Place place) const {
    return readXmlObject(place).value_or(Null());
}

}  // namespace platform::property_list
