// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/binary_layout.h"

namespace platform::property_list {

namespace {

constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;
constexpr std::size_t greatestNumberSize = 16;

bool complain(Fault& fault, const char* reason, std::size_t offset) {
    fault = {reason, offset};
    return false;
}

}  // namespace

std::optional<BinaryLayout> BinaryLayout::parse(std::string_view bytes, Fault& fault) {
    BinaryLayout layout(bytes);
    return layout.parseTrailer(fault) && layout.checkTable(fault) ? std::optional(layout) : std::nullopt;
}

bool BinaryLayout::parseTrailer(Fault& fault) {
    if (_bytes.size() < headerSize + trailerSize) return complain(fault, "too short for a header and a trailer", 0);
    const std::size_t trailer = _bytes.size() - trailerSize;
    const auto field = [&](std::size_t place, std::size_t size) {
        return readCappedNumber(_bytes.substr(trailer + place, size));
    };
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

bool BinaryLayout::checkTable(Fault& fault) const {
    for (std::size_t number = 0; number < _objectCount; ++number) {
        if (readCappedNumber(_bytes.substr(_table + number * _offsetSize, _offsetSize)) >= _table) {
            return complain(fault, "an object's offset is not before the offset table", _table + number * _offsetSize);
        }
    }
    return true;
}

std::size_t BinaryLayout::offsetOf(std::size_t number) const {
    return readLowBits(_bytes.substr(_table + number * _offsetSize, _offsetSize));
}

std::uint64_t BinaryLayout::reference(const BinaryObject& container, std::size_t index) const {
    return readCappedNumber(_bytes.substr(container.content + index * _referenceSize, _referenceSize));
}

std::optional<BinaryObject> BinaryLayout::object(std::size_t number, Fault& fault) const {
    BinaryObject object;
    object.start = offsetOf(number);
    if (object.start < headerSize) {
        complain(fault, "an object lies in the file's header", object.start);
        return std::nullopt;
    }
    object.content = object.start + 1;
    return measure(object, fault) ? std::optional(object) : std::nullopt;
}

/// Completes an object of which only the place is known.
bool BinaryLayout::measure(BinaryObject& object, Fault& fault) const {
    const auto marker = static_cast<unsigned char>(_bytes[object.start]);
    const std::size_t low = marker & 0xF;
    const auto scalar = [&](BinaryKind kind, std::size_t size) {
        object.kind = kind;
        object.count = size;
        object.end = object.content + size;
        return object.end <= _table || complain(fault, "an object reaches past the offset table", object.start);
    };
    const auto counted = [&](BinaryKind kind, std::size_t unitSize) {
        object.kind = kind;
        return measureCounted(object, low, unitSize, fault);
    };
    switch (marker >> 4) {
        case 0x0:
            if (low == 0x0) return scalar(BinaryKind::null, 0);
            if (low == 0x8) return scalar(BinaryKind::isFalse, 0);
            if (low == 0x9) return scalar(BinaryKind::isTrue, 0);
            break;
        case 0x1:
            if (low <= 4) return scalar(BinaryKind::integer, std::size_t{1} << low);
            break;
        case 0x2:
            if (low == 2 || low == 3) return scalar(BinaryKind::real, std::size_t{1} << low);
            break;
        case 0x3:
            if (low == 3) return scalar(BinaryKind::date, 8);
            break;
        case 0x4:
            return counted(BinaryKind::data, 1);
        case 0x5:
            return counted(BinaryKind::asciiString, 1);
        case 0x6:
            return counted(BinaryKind::utf16String, 2);
        case 0x8:
            return scalar(BinaryKind::uid, low + 1);
        case 0xA:
            return counted(BinaryKind::array, _referenceSize);
        case 0xC:
            return counted(BinaryKind::set, _referenceSize);
        case 0xD:
            return counted(BinaryKind::dictionary, 2 * _referenceSize);
        default:
            break;
    }
    return complain(fault, "an object of an unknown kind", object.start);
}

/// The count stands in the marker when it is less than 15, else in an integer behind it.
bool BinaryLayout::measureCounted(BinaryObject& object, std::size_t shortCount, std::size_t unitSize,
                                  Fault& fault) const {
    std::uint64_t count = shortCount;
    if (shortCount == 0xF) {
        const auto marker = static_cast<unsigned char>(_bytes[object.content]);
        const std::size_t size = std::size_t{1} << (marker & 0xF);
        const bool isInteger = marker >> 4 == 0x1 && size <= greatestNumberSize;
        if (!isInteger || object.content + 1 + size > _table) {
            return complain(fault, "an object's count is no integer", object.start);
        }
        count = readLowBits(_bytes.substr(object.content + 1, size));
        object.content += 1 + size;
    }
    if (count > (_table - object.content) / unitSize) {
        return complain(fault, "an object reaches past the offset table", object.start);
    }
    object.count = count;
    object.end = object.content + count * unitSize;
    return true;
}

}  // namespace platform::property_list
