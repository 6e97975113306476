// SPDX-License-Identifier: MIT
// Thousands of values, there and back: what ours writes, a peer reads; what the peer then writes, ours
// reads.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

#include "platform/foundation/property_list.h"
#include "plistlib_peer.h"
#include "tests/property_lists/libplist_peer.h"
#include "tests/property_lists/random_value.h"

namespace {

using namespace platform;

constexpr int valueCount = 4000;

struct Peer {
    std::function<peers::PeerReading(const std::string&, PropertyListFormat)> read;
    /// Whether it writes a UID of a binary file as XML.
    bool writesUidAsXml;
};

bool holdsUid(const Value& value) {
    if (const Array* array = value.array()) return std::any_of(array->begin(), array->end(), holdsUid);
    const Dictionary* dictionary = value.dictionary();
    if (!dictionary) return value.uid() != nullptr;
    return std::any_of(dictionary->begin(), dictionary->end(),
                       [](const Dictionary::Entry& entry) { return holdsUid(entry.value); });
}

PropertyListWriting written(const Value& value, PropertyListFormat format) {
    return format == PropertyListFormat::xml ? writeXmlPropertyList(value) : writeBinaryPropertyList(value);
}

/// What the value looks like in a failure's message.
std::string shown(const Value& value) {
    return writeXmlPropertyList(value).bytes.value_or("a value that XML cannot say");
}

/// `fromXml` says that the peer has read XML, so that to it UIDs are dictionaries.
void expectReadAs(const std::optional<std::string>& bytes, const Value& value, bool fromXml) {
    ASSERT_TRUE(bytes) << shown(value);
    const PropertyListReading reading = readPropertyList(*bytes);
    ASSERT_TRUE(reading) << reading.error.reason << '\n' << *bytes;
    const Value read = fromXml ? peers::withXmlUids(*reading.value) : *reading.value;
    ASSERT_TRUE(read == value) << shown(value) << "came back as\n" << shown(read);
}

void expectTravels(const Value& value, PropertyListFormat format, const Peer& peer) {
    const PropertyListWriting ours = written(value, format);
    ASSERT_TRUE(ours) << ours.reason;
    const peers::PeerReading theirs = peer.read(*ours.bytes, format);
    ASSERT_TRUE(theirs.value) << shown(value);
    ASSERT_TRUE(*theirs.value == value) << shown(value) << "was read as\n" << shown(*theirs.value);
    const bool fromXml = format == PropertyListFormat::xml;
    ASSERT_NO_FATAL_FAILURE(expectReadAs(theirs.binary, value, fromXml));
    if (!fromXml && !peer.writesUidAsXml && holdsUid(value)) {
        ASSERT_FALSE(theirs.xml) << shown(value);
    } else {
        ASSERT_NO_FATAL_FAILURE(expectReadAs(theirs.xml, value, fromXml));
    }
}

void expectAllTravel(PropertyListFormat format, const Peer& peer) {
    RandomValues values(5, RandomValues::Kinds::thoseOfXml);
    for (int count = 0; count < valueCount; ++count)
        ASSERT_NO_FATAL_FAILURE(expectTravels(values.next(), format, peer));
}

const Peer libplist{peers::readAndWriteByLibplist, true};

Peer plistlib(peers::PlistlibPeer& python) {
    return {[&](const std::string& bytes, PropertyListFormat) { return python.read(bytes); }, false};
}

TEST(RandomValuesByLibplist, travelAsXml) {
    expectAllTravel(PropertyListFormat::xml, libplist);
}

TEST(RandomValuesByLibplist, travelAsBinary) {
    expectAllTravel(PropertyListFormat::binary, libplist);
}

TEST(RandomValuesByPlistlib, travelAsXml) {
    peers::PlistlibPeer python;
    expectAllTravel(PropertyListFormat::xml, plistlib(python));
}

TEST(RandomValuesByPlistlib, travelAsBinary) {
    peers::PlistlibPeer python;
    expectAllTravel(PropertyListFormat::binary, plistlib(python));
}

}  // namespace
