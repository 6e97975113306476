// SPDX-License-Identifier: MIT
#include "fuzz/property_lists/reading_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <span>
#include <string>
#include <vector>

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

/// Not in the dictionary, and yet much like a key that is.
std::string absentKey(const Dictionary& dictionary) {
    std::string key = dictionary.size() == 0 ? "a" : dictionary.begin()->key;
    while (dictionary.contains(key))
        key += 'a';
    return key;
}

void checkKeys(std::string_view bytes, std::span<const std::string_view> keys, const Dictionary& expected) {
    const std::optional<Dictionary> read = readRootKeys(bytes, keys);
    require(read.has_value(), "some keys are read where the whole is");
    require(Value(*read) == Value(expected), "some keys have the values that the tree has");
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

void checkRootKeys(std::string_view bytes, const PropertyListReading& reading) {
    const Dictionary* root = reading ? reading.value->dictionary() : nullptr;
    if (!root) {
        constexpr std::string_view keys[] = {"a", "CF$UID"};
        require(!readRootKeys(bytes, keys), "no keys are read where there is no dictionary");
        return;
    }
    const std::string absent = absentKey(*root);
    std::vector<std::string_view> keys{absent};
    Dictionary all;
    for (const auto& [key, value] : *root) {
        const std::string_view wanted[] = {key};
        checkKeys(bytes, wanted, Dictionary{{key, value}});
        keys.push_back(key);
        all.set(key, value);
    }
    checkKeys(bytes, keys, all);
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
