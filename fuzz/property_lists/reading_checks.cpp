// SPDX-License-Identifier: MIT
#include "fuzz/property_lists/reading_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "fuzz/require.h"
#include "tests/property_lists/libplist_agreement.h"

namespace fuzz {
namespace {

using namespace platform;

constexpr std::string_view mark = "\xEF\xBB\xBF";

bool isNegativeZero(double number) {
    return number == 0 && std::signbit(number);
}

bool isChangedByXml(const Value& value);

bool isChangedByXml(const Dictionary& dictionary) {
    const Value* uid = dictionary.size() == 1 ? dictionary.find("CF$UID") : nullptr;
    return (uid && (uid->integer() || uid->real())) ||
           std::any_of(dictionary.begin(), dictionary.end(), [](const Dictionary::Entry& entry) {
               return entry.key.starts_with(mark) || isChangedByXml(entry.value);
           });
}

/// What the rules of XML property lists do not keep: the sign of zero, which NaN it is, the fraction of
/// a second, U+FEFF at the start of a text, and that a dictionary of the one key CF$UID is one.
bool isChangedByXml(const Value& value) {
    if (const double* real = value.real()) return isNegativeZero(*real) || std::isnan(*real);
    if (const Date* date = value.date()) {
        const double seconds = date->secondsSince2001;
        return isNegativeZero(seconds) || seconds != std::floor(seconds);
    }
    if (const std::string* text = value.string()) return text->starts_with(mark);
    if (const Array* array = value.array()) {
        return std::any_of(array->begin(), array->end(), [](const Value& item) { return isChangedByXml(item); });
    }
    const Dictionary* dictionary = value.dictionary();
    return dictionary && isChangedByXml(*dictionary);
}

void checkLookup(std::string_view bytes, std::string_view key, const PropertyListLookup& expected) {
    const PropertyListLookup lookup = lookUpRootKey(bytes, key);
    require(lookup.verdict == expected.verdict, "a look-up comes to the verdict of the whole reading");
    require(lookup.value == expected.value, "a look-up gives the value that the tree has");
}

void checkNestedLookup(std::string_view bytes, std::string_view outer, std::string_view inner,
                       const PropertyListNestedLookup& expected) {
    const PropertyListNestedLookup lookup = lookUpNestedKey(bytes, outer, inner);
    require(lookup.verdict == expected.verdict, "a nested look-up comes to the verdict of the whole reading");
    require(lookup.value == expected.value, "a nested look-up gives the value that the tree has");
}

/// Not in the dictionary, and yet much like a key that is.
std::string absentKey(const Dictionary& dictionary) {
    std::string key = dictionary.size() == 0 ? "a" : dictionary.begin()->key;
    while (dictionary.contains(key))
        key += 'a';
    return key;
}

void checkLookupsUnder(std::string_view bytes, const Dictionary::Entry& outer) {
    using Verdict = PropertyListNestedLookup::Verdict;
    const Dictionary* dictionary = outer.value.dictionary();
    if (!dictionary) return checkNestedLookup(bytes, outer.key, "a", {Verdict::outerNoDictionary, {}});
    for (const auto& inner : *dictionary)
        checkNestedLookup(bytes, outer.key, inner.key, {Verdict::found, inner.value});
    checkNestedLookup(bytes, outer.key, absentKey(*dictionary), {Verdict::innerAbsent, {}});
}

void checkLookupsIn(std::string_view bytes, const Dictionary& root) {
    for (const auto& entry : root) {
        checkLookup(bytes, entry.key, {PropertyListLookup::Verdict::found, entry.value});
        checkLookupsUnder(bytes, entry);
    }
    const std::string absent = absentKey(root);
    checkLookup(bytes, absent, {PropertyListLookup::Verdict::absent, {}});
    checkNestedLookup(bytes, absent, "a", {PropertyListNestedLookup::Verdict::outerAbsent, {}});
}

/// What came of holding readings against libplist's. It is said at the end of a run.
class AgreementRecord {
public:
    ~AgreementRecord() {
        std::fprintf(stderr, "Compared with libplist: %zu times, a known difference %zu times, an unknown one %zu\n",
                     _agreed, _excused, _differed);
    }

    void agreed() { ++_agreed; }
    void excused() { ++_excused; }

    /// Libplist has faults of its own, which whoever changes our code need not explain: where this variable names
    /// a folder, bytes that it reads in another way are kept there, and the run goes on.
    void differed(std::string_view bytes) {
        const char* const folder = std::getenv("TRIVEL3_FUZZ_DIFFERENCES");
        require(folder, "libplist reads the same");
        constexpr std::size_t mostKept = 10;
        if (++_differed > mostKept) return;
        std::ofstream file(folder + ("/" + std::to_string(_differed)), std::ios::binary);
        require(static_cast<bool>(file << bytes << std::flush), "a difference can be kept");
    }

private:
    std::size_t _agreed = 0;
    std::size_t _excused = 0;
    std::size_t _differed = 0;
};

Value readAgain(const std::string& bytes) {
    const PropertyListReading reading = readPropertyList(bytes);
    require(reading.value.has_value(), "what is written is read again");
    return *reading.value;
}

}  // namespace

void checkError(std::string_view bytes, const PropertyListReading& reading) {
    if (reading) return;
    require(!reading.error.reason.empty(), "an error has a reason");
    require(reading.error.offset <= bytes.size(), "an error lies in the file");
}

void checkLookups(std::string_view bytes, const PropertyListReading& reading) {
    using Verdict = PropertyListLookup::Verdict;
    using NestedVerdict = PropertyListNestedLookup::Verdict;
    if (!reading) {
        checkLookup(bytes, "a", {Verdict::malformed, {}});
        checkNestedLookup(bytes, "a", "a", {NestedVerdict::malformed, {}});
    } else if (const Dictionary* root = reading.value->dictionary()) {
        checkLookupsIn(bytes, *root);
    } else {
        checkLookup(bytes, "CF$UID", {Verdict::noDictionary, {}});
        checkNestedLookup(bytes, "CF$UID", "a", {NestedVerdict::noDictionary, {}});
    }
}

void checkXmlForm(const Value& value) {
    constexpr int mostChanges = 3;
    Value current = value;
    for (int changes = 0; changes <= mostChanges; ++changes) {
        const PropertyListWriting writing = writeXmlPropertyList(current);
        require(writing || changes == 0, "what has been written once can be written again");
        if (!writing) return;
        const Value again = readAgain(*writing.bytes);
        if (!isChangedByXml(current)) {
            require(again == current, "what is written as XML is read as the same value");
            require(writeXmlPropertyList(again).bytes == writing.bytes, "the same value is written as the same XML");
            return;
        }
        current = again;
    }
}

void checkBinaryForm(const Value& value) {
    const PropertyListWriting writing = writeBinaryPropertyList(value);
    require(writing.bytes.has_value(), "what is read can be written as a binary property list");
    require(readAgain(*writing.bytes) == value, "what is written as a binary property list is read as the same value");
}

void checkAgainstLibplist(std::string_view bytes, const PropertyListReading& reading) {
    using Verdict = peers::Agreement::Verdict;
    static AgreementRecord record;
    switch (peers::compareWithLibplist(bytes, reading).verdict) {
        case Verdict::notCompared:
            break;
        case Verdict::agreed:
            record.agreed();
            break;
        case Verdict::excused:
            record.excused();
            break;
        case Verdict::differed:
            record.differed(bytes);
            break;
    }
}

}  // namespace fuzz
