// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/foundation/bytes.h"
#include "platform/foundation/property_list.h"

namespace platform::property_list {

/// Seven bytes and one more of any value begin a binary property list.
constexpr bool isBinary(std::string_view bytes) {
    return bytes.starts_with("bplist0");
}

enum class BinaryKind : std::uint8_t {
    null,
    isFalse,
    isTrue,
    integer,
    real,
    date,
    data,
    asciiString,
    utf16String,
    uid,
    array,
    set,
    dictionary,
};

constexpr bool isContainer(BinaryKind kind) {
    return kind >= BinaryKind::array;
}
constexpr bool isString(BinaryKind kind) {
    return kind == BinaryKind::asciiString || kind == BinaryKind::utf16String;
}

/// One object as it lies in the file.
struct BinaryObject {
    BinaryKind kind = BinaryKind::null;
    /// Bytes of a scalar, units of a string, members of an array or set, entries of a dictionary.
    std::size_t count = 0;
    std::size_t start = 0;    ///< the offset of its marker
    std::size_t content = 0;  ///< the offset of what follows its marker and count
    std::size_t end = 0;      ///< the offset behind it
};

/// Where things are in a binary property list. Once `parse` has succeeded, the following holds, and
/// everything else relies on it:
///  - the offset table lies between the objects and the trailer and has an entry for every object;
///  - there is at least one object, and the root is one of them;
///  - every entry of the table points before the table;
///  - `find()` succeeds only for an object that lies wholly between the header and the table.
/// What the objects say, and the references in them, is not checked here.
class BinaryLayout {
public:
    static std::optional<BinaryLayout> parse(std::string_view bytes, PropertyListError& fault);

    std::size_t fileSize() const { return _bytes.size(); }
    std::size_t objectCount() const { return _objectCount; }
    std::size_t root() const { return _root; }

    /// Numbers of objects are less than `objectCount()`. Offsets and references have up to 16 bytes, of which the
    /// last eight count.
    std::size_t offsetOf(std::size_t number) const {
        return readBigEndian(piece(_table + number * _offsetSize, _offsetSize));
    }
    bool find(std::size_t number, BinaryObject& object, PropertyListError& fault) const;

    /// An object that `find` has succeeded for once.
    BinaryObject object(std::size_t number) const {
        BinaryObject object;
        PropertyListError never;
        find(number, object, never);
        return object;
    }

    /// The number that a container's reference gives; it can be out of range. A dictionary's
    /// references are those of its keys, followed by those of its values.
    std::uint64_t reference(const BinaryObject& container, std::size_t index) const {
        return readBigEndian(piece(container.content + index * _referenceSize, _referenceSize));
    }

    std::string_view content(const BinaryObject& object) const {
        return piece(object.content, object.end - object.content);
    }

private:
    explicit BinaryLayout(std::string_view bytes) : _bytes(bytes) {}

    bool parseTrailer(PropertyListError& fault);
    bool checkTable(PropertyListError& fault) const;
    bool readLongCount(BinaryObject& object) const;

    /// A piece that is known to lie in the file.
    std::string_view piece(std::size_t start, std::size_t size) const { return {_bytes.data() + start, size}; }

    std::string_view _bytes;
    std::size_t _table = 0;
    std::size_t _offsetSize = 0;
    std::size_t _referenceSize = 0;
    std::size_t _objectCount = 0;
    std::size_t _root = 0;
};

}  // namespace platform::property_list
