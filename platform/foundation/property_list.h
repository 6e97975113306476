// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/export.h"
#include "platform/foundation/value.h"

/// The platform's property lists (`NSPropertyListSerialization`): reading (XML and binary, told apart by their
/// first bytes) and writing. The XML that is written equals the platform's own byte for byte.
namespace platform {

enum class PropertyListFormat { xml, binary };

/// What is wrong with a property list, and where.
struct PropertyListError {
    std::string reason;      ///< one clause without a full stop: "unknown tag <foo>"
    std::size_t offset = 0;  ///< bytes from the start of the file
    /// For XML, both from 1; the column counts bytes of the file. Both 0 for a binary property list.
    std::size_t line = 0;
    std::size_t column = 0;
};

struct PropertyListReading {
    /// The root object; nothing when the bytes are no property list, and then `error` says why.
    std::optional<Value> value;
    PropertyListFormat format = PropertyListFormat::xml;
    PropertyListError error;

    explicit operator bool() const { return value.has_value(); }
};

/// Reads a whole property list. Any bytes at all give a value or an error, in time and memory in
/// proportion to their number.
TRIVEL3_PLATFORM_EXPORT PropertyListReading readPropertyList(std::string_view bytes);

/// The same for bytes from strangers, which may take no more memory than some hundred bytes for each of `mostValues`
/// and a few times their own number: with more values, keys counted, they are an error, and so they are where objects
/// overlap or dictionaries share long keys.
TRIVEL3_PLATFORM_EXPORT PropertyListReading readPropertyListOfStrangers(std::string_view bytes, std::size_t mostValues);

/// The root dictionary with these of its keys and no others, without building the rest of the tree.
/// Nothing where `readPropertyList` would fail, or give no dictionary.
TRIVEL3_PLATFORM_EXPORT std::optional<Dictionary> readRootKeys(std::string_view bytes,
                                                               std::span<const std::string_view> keys);

struct PropertyListWriting {
    /// The encoded bytes; nothing when the value holds what the format cannot say, and then
    /// `reason` tells what.
    std::optional<std::string> bytes;
    std::string reason;

    explicit operator bool() const { return bytes.has_value(); }
};

/// The first character of the text that XML has no way to say: a control character but tab and line feed, U+FFFE or
/// U+FFFF. The carriage return counts, since readers make a line feed of it. The platform writes them all the same, and
/// other readers refuse the whole file. Nothing where there is none.
TRIVEL3_PLATFORM_EXPORT std::optional<char32_t> characterBeyondXml(std::string_view text);

/// XML says neither null, sets nor keys that are no strings.
TRIVEL3_PLATFORM_EXPORT PropertyListWriting writeXmlPropertyList(const Value& root);

/// The binary format says every value. Equal scalars and shared containers are written once.
TRIVEL3_PLATFORM_EXPORT PropertyListWriting writeBinaryPropertyList(const Value& root);

namespace property_list {

/// How deep containers that hold something may nest. An empty one may stand one level deeper, since
/// it can be written without opening it. What nests deeper is neither read nor written, in either
/// format, so that whatever can be read can be written and read again.
inline constexpr std::size_t greatestDepth = 512;
inline constexpr const char* tooDeep = "more than 512 nested containers";

}  // namespace property_list

}  // namespace platform
