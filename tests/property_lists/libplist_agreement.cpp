// SPDX-License-Identifier: MIT
#include "tests/property_lists/libplist_agreement.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <iterator>
#include <string>

#include "tests/property_lists/libplist_peer.h"

namespace peers {
namespace {

using namespace platform;

/// More than a file of settings has, and few enough for libplist, which shares nothing.
constexpr std::size_t mostObjects = 10000;

/// What a surrogate without its partner is read as.
constexpr std::string_view replacement = "\xEF\xBF\xBD";

constexpr std::string_view digits = "0123456789";

// -- Documents that libplist takes in another way ------------------------------------------------

/// Calls the function with what follows each occurrence of the text, until it says true.
template <class Function>
bool anyBehind(std::string_view bytes, std::string_view text, Function function) {
    for (std::size_t place = bytes.find(text); place != bytes.npos; place = bytes.find(text, place + 1)) {
        if (function(bytes.substr(place + text.size()))) return true;
    }
    return false;
}

/// The text of an element, given what follows the name in its tag.
std::string_view elementText(std::string_view behindName) {
    const std::size_t begin = behindName.find('>');
    if (begin == behindName.npos) return {};
    const std::string_view text = behindName.substr(begin + 1);
    return text.substr(0, text.find('<'));
}

bool hasNul(const std::string& text) {
    return text.find('\0') != text.npos;
}

/// Whether the condition holds for the value or for one in it, keys included.
template <class Condition>
bool holdsAnywhere(const Value& value, Condition condition) {
    const auto inIt = [&](const Value& member) { return holdsAnywhere(member, condition); };
    if (condition(value)) return true;
    if (const Array* array = value.array()) return std::any_of(array->begin(), array->end(), inIt);
    if (const Set* set = value.set()) return std::any_of(set->members.begin(), set->members.end(), inIt);
    const Dictionary* dictionary = value.dictionary();
    return dictionary && std::any_of(dictionary->begin(), dictionary->end(),
                                     [&](const Dictionary::Entry& entry) { return inIt(entry.value); });
}

bool hasNulInKey(const Value& value) {
    const Dictionary* dictionary = value.dictionary();
    return dictionary && std::any_of(dictionary->begin(), dictionary->end(),
                                     [](const Dictionary::Entry& entry) { return hasNul(entry.key); });
}

bool hasNulInText(const Value& value) {
    return value.string() && hasNul(*value.string());
}

bool isXml(std::string_view bytes) {
    return !bytes.starts_with("bplist0");
}

bool holdsNul(std::string_view bytes, const Value& ours) {
    return holdsAnywhere(ours, hasNulInText) || (isXml(bytes) && bytes.find('\0') != bytes.npos);
}

bool isInAnotherEncoding(std::string_view bytes, const Value&) {
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) == 0; });
    return !isAscii && bytes.starts_with("<?xml") && anyBehind(bytes, "encoding=", [](std::string_view rest) {
        return !rest.starts_with("\"UTF-8\"") && !rest.starts_with("'UTF-8'");
    });
}

bool hasQuotedTagEnd(std::string_view bytes, const Value&) {
    return anyBehind(bytes, "<", [](std::string_view rest) {
        const std::string_view tag = rest.substr(0, rest.find(rest.starts_with('?') ? "?>" : ">"));
        return std::count(tag.begin(), tag.end(), '"') % 2 != 0;
    });
}

bool hasLeadingZero(std::string_view bytes, const Value&) {
    return anyBehind(bytes, "<integer", [](std::string_view rest) {
        std::string_view text = elementText(rest);
        const auto isAhead = [](char byte) {
            return static_cast<unsigned char>(byte) <= ' ' || byte == '+' || byte == '-';
        };
        while (!text.empty() && isAhead(text.front()))
            text.remove_prefix(1);
        return text.size() > 1 && text[0] == '0' && digits.find(text[1]) != digits.npos;
    });
}

bool hasByteOrderMarkInside(std::string_view bytes, const Value&) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    const auto isReference = [](std::string_view rest) {
        std::string code(rest.substr(0, rest.find(';')));
        std::transform(code.begin(), code.end(), code.begin(),
                       [](unsigned char letter) { return std::tolower(letter); });
        return code.ends_with("65279") || code.ends_with("feff");
    };
    return bytes.find(mark, 1) != bytes.npos || anyBehind(bytes, "&#", isReference);
}

/// Whether there is padding, and it does not just fill the last group of four.
bool isPaddedLoosely(std::string_view text) {
    std::string characters;
    std::copy_if(text.begin(), text.end(), std::back_inserter(characters), [](unsigned char byte) {
        return std::isalnum(byte) != 0 || byte == '+' || byte == '/' || byte == '=';
    });
    const std::size_t padding = characters.find('=');
    if (padding == characters.npos) return false;
    return characters.size() % 4 != 0 || characters.size() - padding > 2 ||
           characters.find_first_not_of('=', padding) != characters.npos;
}

bool hasLoosePadding(std::string_view bytes, const Value&) {
    return anyBehind(bytes, "<data", [](std::string_view rest) { return isPaddedLoosely(elementText(rest)); });
}

/// Whether the date is written in another way than it was spelled.
bool rollsOver(std::string_view text) {
    const PropertyListReading date = readPropertyList("<date>" + std::string(text) + "</date>");
    return date && writeXmlPropertyList(*date.value).bytes.value_or("").find(text) == std::string::npos;
}

bool hasDateThatRollsOver(std::string_view bytes, const Value&) {
    return anyBehind(bytes, "<date", [](std::string_view rest) { return rollsOver(elementText(rest)); });
}

bool hasReplacementInKey(const Value& value) {
    const Dictionary* dictionary = value.dictionary();
    return dictionary && std::any_of(dictionary->begin(), dictionary->end(), [](const Dictionary::Entry& entry) {
               return entry.key.find(replacement) != std::string::npos;
           });
}

bool mayMergeKeys(std::string_view bytes, const Value& ours) {
    return !isXml(bytes) && holdsAnywhere(ours, hasReplacementInKey);
}

/// libplist takes an empty root for one that is still open.
bool hasElementBehindEmptyRoot(std::string_view bytes, const Value& ours) {
    const bool isEmpty = (ours.array() && ours.array()->empty()) || (ours.dictionary() && ours.dictionary()->empty());
    return isEmpty && anyBehind(bytes, "/>", [](std::string_view rest) {
               return anyBehind(rest, "<", [](std::string_view tag) {
                   return !tag.empty() && std::isalpha(static_cast<unsigned char>(tag.front()));
               });
           });
}

struct KnownDocument {
    std::string_view name;
    bool (*applies)(std::string_view bytes, const Value& ours);
    bool isXmlOnly = true;
};

constexpr std::array knownDocuments{
    KnownDocument{"libplist ends a text at U+0000, and XML too", holdsNul, false},
    KnownDocument{"libplist takes every file for UTF-8", isInAnotherEncoding},
    KnownDocument{"libplist lets no quoted > end a tag", hasQuotedTagEnd},
    KnownDocument{"libplist reads an integer with leading zeros as octal", hasLeadingZero},
    KnownDocument{"libplist keeps a U+FEFF at the start of a text", hasByteOrderMarkInside},
    KnownDocument{"libplist takes padding for data where it does not just fill the last group", hasLoosePadding},
    KnownDocument{"libplist merges keys that only dropped surrogates tell apart", mayMergeKeys, false},
    KnownDocument{"libplist lets no part of a date roll over", hasDateThatRollsOver},
    KnownDocument{"libplist puts what follows an empty root into it", hasElementBehindEmptyRoot},
};

// -- Values that libplist has in another way -----------------------------------------------------

/// A pair of values that stand at the same place.
struct Pair {
    const Value& ours;
    const Value& theirs;
    PropertyListFormat format;
};

bool isDateOutOfRange(const Pair& pair) {
    constexpr double bound = 2147483647;
    const Date* date = pair.ours.date();
    return date && pair.theirs.date() && std::abs(date->secondsSince2001) >= bound;
}

bool isDateWithFraction(const Pair& pair) {
    const Date* ours = pair.ours.date();
    const Date* theirs = pair.theirs.date();
    if (!ours || !theirs) return false;
    const double seconds = ours->secondsSince2001;
    const bool isZero = seconds == 0 && theirs->secondsSince2001 == 0;
    return isZero || (seconds != std::floor(seconds) && std::abs(seconds - theirs->secondsSince2001) < 2);
}

/// Whether the text has the bytes as its characters.
bool hasCharacters(std::string_view utf8, std::string_view bytes) {
    for (const char byte : bytes) {
        const char character[] = {static_cast<char>(0xC0 | (byte >> 6 & 0x03)),
                                  static_cast<char>(0x80 | (byte & 0x3F))};
        const std::string_view expected =
            (byte & 0x80) == 0 ? std::string_view(&byte, 1) : std::string_view(character, 2);
        if (!utf8.starts_with(expected)) return false;
        utf8.remove_prefix(expected.size());
    }
    return utf8.empty();
}

bool isLatin1(const Pair& pair) {
    return pair.format == PropertyListFormat::binary && pair.ours.string() && pair.theirs.string() &&
           hasCharacters(*pair.ours.string(), *pair.theirs.string());
}

std::string withoutReplacements(std::string text) {
    for (std::size_t place = 0; (place = text.find(replacement, place)) != text.npos;)
        text.erase(place, replacement.size());
    return text;
}

bool hasLoneSurrogate(const Pair& pair) {
    return pair.format == PropertyListFormat::binary && pair.ours.string() && pair.theirs.string() &&
           withoutReplacements(*pair.ours.string()) == withoutReplacements(*pair.theirs.string());
}

/// The text without characters from U+10000 on, which pairs of surrogates make.
std::string withoutPairs(std::string text) {
    constexpr std::size_t length = 4;
    for (std::size_t place = 0; place < text.size();) {
        if (static_cast<unsigned char>(text[place]) >= 0xF0) {
            text.erase(place, length);
        } else {
            ++place;
        }
    }
    return text;
}

bool hasSurrogatesApart(const Pair& pair) {
    return pair.format == PropertyListFormat::binary && pair.ours.string() && pair.theirs.string() &&
           pair.ours.string()->find(replacement) != std::string::npos &&
           withoutPairs(withoutReplacements(*pair.ours.string())) ==
               withoutPairs(withoutReplacements(*pair.theirs.string()));
}

constexpr std::string_view keysAreApart = "libplist keeps keys apart that are one as Latin-1";

/// Whose entries are then compared.
bool hasKeysApart(const Pair& pair) {
    const Dictionary* ours = pair.ours.dictionary();
    const Dictionary* theirs = pair.theirs.dictionary();
    return pair.format == PropertyListFormat::binary && ours && theirs && theirs->size() > ours->size() &&
           std::all_of(theirs->begin(), theirs->end(), [&](const Dictionary::Entry& other) {
               return ours->contains(other.key) ||
                      std::any_of(ours->begin(), ours->end(),
                                  [&](const Dictionary::Entry& mine) { return hasCharacters(mine.key, other.key); });
           });
}

constexpr std::string_view setsAreArrays = "libplist reads a set as an array";

/// Whose members are then compared.
bool isSet(const Pair& pair) {
    return pair.ours.set() && pair.theirs.array();
}

struct KnownValue {
    std::string_view name;
    bool (*applies)(const Pair& pair);
};

constexpr std::array knownValues{
    KnownValue{"libplist gives dates as seconds of 32 bits", isDateOutOfRange},
    KnownValue{"libplist cuts a date towards zero, and gives its fraction, and zero itself, without a sign",
               isDateWithFraction},
    KnownValue{"libplist takes the bytes of ASCII strings for UTF-8, not Latin-1", isLatin1},
    KnownValue{keysAreApart, hasKeysApart},
    KnownValue{"libplist drops a surrogate without its partner", hasLoneSurrogate},
    KnownValue{"libplist pairs surrogates that have other characters between them", hasSurrogatesApart},
    KnownValue{setsAreArrays, isSet},
};

class Comparison {
public:
    explicit Comparison(PropertyListFormat format) : _format(format) {}

    bool agree(const Value& ours, const Value& theirs) {
        if (ours.array() && theirs.array()) return agree(*ours.array(), *theirs.array());
        if (ours.set() && theirs.array()) return agree(*ours.set(), *theirs.array());
        if (ours.dictionary() && theirs.dictionary()) {
            const bool areApart = hasKeysApart({ours, theirs, _format});
            if (areApart) excuse(keysAreApart);
            return (areApart || ours.dictionary()->size() == theirs.dictionary()->size()) &&
                   agree(*ours.dictionary(), *theirs.dictionary());
        }
        return ours == theirs || isKnown({ours, theirs, _format});
    }

    /// The name of the first known difference that was met.
    std::string_view excuse() const { return _excuse; }

private:
    bool agree(const Array& ours, const Array& theirs) {
        return std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(),
                          [this](const Value& mine, const Value& other) { return agree(mine, other); });
    }

    bool agree(const Set& ours, const Array& theirs) {
        excuse(setsAreArrays);
        return agree(ours.members, theirs);
    }

    bool agree(const Dictionary& ours, const Dictionary& theirs) {
        return std::all_of(ours.begin(), ours.end(),
                           [&](const Dictionary::Entry& entry) { return hasCounterpart(entry, theirs); });
    }

    bool hasCounterpart(const Dictionary::Entry& mine, const Dictionary& theirs) {
        const Value* exact = theirs.find(mine.key);
        if (exact && agree(mine.value, *exact)) return true;
        return _format == PropertyListFormat::binary &&
               std::any_of(theirs.begin(), theirs.end(), [&](const Dictionary::Entry& other) {
                   return isKnown({mine.key, other.key, _format}) && agree(mine.value, other.value);
               });
    }

    bool isKnown(const Pair& pair) {
        const auto known = std::find_if(knownValues.begin(), knownValues.end(),
                                        [&](const KnownValue& difference) { return difference.applies(pair); });
        if (known == knownValues.end()) return false;
        excuse(known->name);
        return true;
    }

    void excuse(std::string_view name) {
        if (_excuse.empty()) _excuse = name;
    }

    PropertyListFormat _format;
    std::string_view _excuse;
};

/// libplist makes each object anew wherever it is referred to, and ends the program where a key of a
/// binary property list holds U+0000.
bool canBeGiven(const PropertyListReading& ours) {
    return unfoldsWithin(*ours.value, mostObjects) &&
           (ours.format == PropertyListFormat::xml || !holdsAnywhere(*ours.value, hasNulInKey));
}

}  // namespace

Agreement compareWithLibplist(std::string_view bytes, const PropertyListReading& ours) {
    using Verdict = Agreement::Verdict;
    if (!ours || !canBeGiven(ours)) return {};
    const PeerReading theirs = readByLibplist(bytes, ours.format);
    if (!theirs.value) return {};
    Comparison comparison(ours.format);
    if (comparison.agree(*ours.value, *theirs.value)) {
        return {comparison.excuse().empty() ? Verdict::agreed : Verdict::excused, comparison.excuse()};
    }
    for (const KnownDocument& document : knownDocuments) {
        if (document.isXmlOnly && ours.format == PropertyListFormat::binary) continue;
        if (document.applies(bytes, *ours.value)) return {Verdict::excused, document.name};
    }
    return {Verdict::differed, {}};
}

std::size_t excuseCount() {
    return knownDocuments.size() + knownValues.size();
}

}  // namespace peers
