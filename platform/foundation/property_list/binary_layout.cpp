// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/binary_layout.h"

#include <array>

namespace platform::property_list {

namespace {

constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;
constexpr std::size_t greatestNumberSize = 16;

/// The count in a marker that says that the count follows.
constexpr std::size_t longCount = 0xF;

/// What an object's first byte says.
struct Meaning {
    bool isKnown = false;
    BinaryKind kind = BinaryKind::null;
    bool isCounted = false;  ///< else all objects with this marker are of the same size
    std::uint8_t count = 0;
    std::uint8_t bytesPerUnit = 0;
    std::uint8_t referencesPerUnit = 0;
};

constexpr std::array<Meaning, 256> meanings = [] {
    std::array<Meaning, 256> table{};
    const auto scalar = [&](std::size_t marker, BinaryKind kind, std::size_t size) {
        table[marker] = {true, kind, false, static_cast<std::uint8_t>(size), 1, 0};
    };
    const auto counted = [&](std::size_t firstMarker, BinaryKind kind, std::uint8_t bytes, std::uint8_t references) {
        for (std::size_t count = 0; count <= longCount; ++count) {
            table[firstMarker + count] = {true, kind, true, static_cast<std::uint8_t>(count), bytes, references};
        }
    };
    scalar(0x00, BinaryKind::null, 0);
    scalar(0x08, BinaryKind::isFalse, 0);
    scalar(0x09, BinaryKind::isTrue, 0);
    for (std::size_t log = 0; log <= 4; ++log)
        scalar(0x10 + log, BinaryKind::integer, std::size_t{1} << log);
    scalar(0x22, BinaryKind::real, 4);
    scalar(0x23, BinaryKind::real, 8);
    scalar(0x33, BinaryKind::date, 8);
    counted(0x40, BinaryKind::data, 1, 0);
    counted(0x50, BinaryKind::asciiString, 1, 0);
    counted(0x60, BinaryKind::utf16String, 2, 0);
    for (std::size_t less = 0; less < 16; ++less)
        scalar(0x80 + less, BinaryKind::uid, less + 1);
    counted(0xA0, BinaryKind::array, 0, 1);
    counted(0xC0, BinaryKind::set, 0, 1);
    counted(0xD0, BinaryKind::dictionary, 0, 2);
    return table;
}();

[[gnu::cold, gnu::noinline]] bool complain(PropertyListError& fault, const char* reason, std::size_t offset) {
    fault = {reason, offset};
    return false;
}

}  // namespace

std::optional<BinaryLayout> BinaryLayout::parse(std::string_view bytes, PropertyListError& fault) {
    BinaryLayout layout(bytes);
    return layout.parseTrailer(fault) && layout.checkTable(fault) ? std::optional(layout) : std::nullopt;
}

bool BinaryLayout::parseTrailer(PropertyListError& fault) {
    if (_bytes.size() < headerSize + trailerSize) return complain(fault, "too short for a header and a trailer", 0);
    const std::size_t trailer = _bytes.size() - trailerSize;
    const auto field = [&](std::size_t place, std::size_t size) { return readBigEndian(piece(trailer + place, size)); };
    _offsetSize = field(6, 1);
    _referenceSize = field(7, 1);
    const std::uint64_t objectCount = field(8, 8);
    const std::uint64_t root = field(16, 8);
    const std::uint64_t table = field(24, 8);

    if (_offsetSize < 1 || _offsetSize > greatestNumberSize) {
        return complain(fault, "the trailer's offset size is not from 1 to 16", trailer + 6);
    }
    if (_referenceSize < 1 || _referenceSize > greatestNumberSize) {
        return complain(fault, "the trailer's reference size is not from 1 to 16", trailer + 7);
    }
    if (objectCount == 0) return complain(fault, "the trailer counts no objects", trailer + 8);
    if (root >= objectCount) return complain(fault, "the root is none of the objects", trailer + 16);
    if (table <= headerSize || table > trailer) {
        return complain(fault, "the offset table does not lie between the objects and the trailer", trailer + 24);
    }
    const std::size_t tableSize = trailer - table;
    if (tableSize % _offsetSize != 0 || tableSize / _offsetSize != objectCount) {
        return complain(fault, "the offset table does not end at the trailer", trailer + 8);
    }
    _objectCount = objectCount;
    _root = root;
    _table = table;
    return true;
}

bool BinaryLayout::checkTable(PropertyListError& fault) const {
    for (std::size_t number = 0; number < _objectCount; ++number) {
        if (offsetOf(number) >= _table) {
            return complain(fault, "an object's offset is not before the offset table", _table + number * _offsetSize);
        }
    }
    return true;
}

bool BinaryLayout::find(std::size_t number, BinaryObject& object, PropertyListError& fault) const {
    object.start = offsetOf(number);
    if (object.start < headerSize) return complain(fault, "an object lies in the header of the file", object.start);
    const Meaning& meaning = meanings[static_cast<unsigned char>(_bytes[object.start])];
    if (!meaning.isKnown) return complain(fault, "an object of an unknown kind", object.start);
    object.kind = meaning.kind;
    object.count = meaning.count;
    object.content = object.start + 1;
    if (meaning.isCounted && meaning.count == longCount && !readLongCount(object)) {
        return complain(fault, "an object's count is no integer", object.start);
    }
    const std::size_t unitSize = meaning.bytesPerUnit + meaning.referencesPerUnit * _referenceSize;
    const std::size_t room = _table - object.content;
    if (object.count > room || object.count * unitSize > room) {
        return complain(fault, "an object reaches past the offset table", object.start);
    }
    object.end = object.content + object.count * unitSize;
    return true;
}

/// A count that does not fit the marker is an integer object right behind it.
bool BinaryLayout::readLongCount(BinaryObject& object) const {
    if (object.content == _table) return false;
    const Meaning& meaning = meanings[static_cast<unsigned char>(_bytes[object.content])];
    const bool isInteger = meaning.isKnown && meaning.kind == BinaryKind::integer;
    if (!isInteger || _table - object.content <= meaning.count) return false;
    object.count = readBigEndian(piece(object.content + 1, meaning.count));
    object.content += 1 + meaning.count;
    return true;
}

}  // namespace platform::property_list
