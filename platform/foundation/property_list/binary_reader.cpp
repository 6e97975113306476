// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/binary_reader.h"

#include <bit>
#include <cstdint>
#include <utility>

#include "platform/foundation/utf8.h"

namespace platform::property_list {

namespace {

/// One, two and four bytes are unsigned, eight are signed, and of sixteen the low eight count,
/// unsigned.
Value integerOf(std::string_view bytes) {
    const std::uint64_t bits = readBigEndian(bytes);
    return bytes.size() == 8 ? Integer{bits, false} : Integer::fromUnsigned(bits);
}

double realOf(std::string_view bytes) {
    const std::uint64_t bits = readBigEndian(bytes);
    return bytes.size() == 4 ? std::bit_cast<float>(static_cast<std::uint32_t>(bits)) : std::bit_cast<double>(bits);
}

Data dataOf(std::string_view bytes) {
    const auto* begin = reinterpret_cast<const std::byte*>(bytes.data());
    return Data(begin, begin + bytes.size());
}

}  // namespace

std::string binaryString(const BinaryLayout& layout, const BinaryObject& object) {
    const std::string_view content = layout.content(object);
    if (object.kind == BinaryKind::utf16String) return utf8FromUtf16(content);
    return isAscii(content) ? std::string(content) : utf8FromLatin1(content);
}

Value BinaryReader::value(std::size_t number) {
    const BinaryObject found = _layout.object(number);
    switch (found.kind) {
        case BinaryKind::data:
        case BinaryKind::asciiString:
        case BinaryKind::utf16String:
        case BinaryKind::array:
        case BinaryKind::set:
        case BinaryKind::dictionary:
            return shared(number, found);
        default:
            return scalar(found);
    }
}

Value BinaryReader::scalar(const BinaryObject& object) const {
    const std::string_view content = _layout.content(object);
    switch (object.kind) {
        case BinaryKind::isFalse:
            return false;
        case BinaryKind::isTrue:
            return true;
        case BinaryKind::integer:
            return integerOf(content);
        case BinaryKind::real:
            return realOf(content);
        case BinaryKind::date:
            return Date{realOf(content)};
        case BinaryKind::uid:
            return Uid{static_cast<std::uint32_t>(readBigEndian(content))};
        default:
            return Null();
    }
}

Value BinaryReader::shared(std::size_t number, const BinaryObject& object) {
    if (_made.empty()) _made.resize(_layout.objectCount());
    if (!_made[number].isNull()) return _made[number];
    const auto make = [&]() -> Value {
        switch (object.kind) {
            case BinaryKind::data:
                return dataOf(_layout.content(object));
            case BinaryKind::array:
                return members(object);
            case BinaryKind::set:
                return Set{members(object)};
            case BinaryKind::dictionary:
                return dictionary(object);
            default:
                return binaryString(_layout, object);
        }
    };
    return _made[number] = make();
}

Array BinaryReader::members(const BinaryObject& object) {
    Array values;
    values.reserve(object.count);
    for (std::size_t index = 0; index < object.count; ++index) {
        values.push_back(value(_layout.reference(object, index)));
    }
    return values;
}

/// The first of equal keys wins.
Value BinaryReader::dictionary(const BinaryObject& found) {
    std::vector<Dictionary::Entry> entries;
    entries.reserve(found.count);
    std::vector<std::pair<Value, Value>> oddEntries;
    for (std::size_t index = 0; index < found.count; ++index) {
        const std::size_t keyNumber = _layout.reference(found, index);
        const BinaryObject key = _layout.object(keyNumber);
        Value entry = value(_layout.reference(found, found.count + index));
        if (isString(key.kind)) {
            entries.push_back({binaryString(_layout, key), std::move(entry)});
        } else {
            oddEntries.emplace_back(value(keyNumber), std::move(entry));
        }
    }
    Dictionary dictionary(std::move(entries), Dictionary::Duplicates::firstWins);
    for (auto& [key, entry] : oddEntries)
        dictionary.addOddEntry(std::move(key), std::move(entry));
    return dictionary;
}

}  // namespace platform::property_list
