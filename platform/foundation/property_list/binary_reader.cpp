// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/binary_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/property_list/binary_layout.h"
#include "platform/foundation/utf8.h"

namespace platform::property_list {

namespace {

// -- Validation --------------------------------------------------------------------------------------

/// So much repetition of keys does no harm, however small the file. What is read is often written to a smaller
/// one, in which the same keys are then more of it.
constexpr std::size_t harmlessKeyBytes = std::size_t{1} << 20;

/// What is known of an object: nothing, that it is being visited, or what came out. The height of a
/// container says how many containers that hold something nest in it, itself counted.
class Finding {
public:
    static constexpr Finding unvisited() { return Finding(0); }
    static constexpr Finding inProgress() { return Finding(1); }
    static constexpr Finding scalar() { return Finding(2); }
    static constexpr Finding containerOf(std::size_t height) { return Finding(static_cast<std::uint16_t>(3 + height)); }

    constexpr bool isContainer() const { return _code >= 3; }
    constexpr std::size_t height() const { return isContainer() ? _code - 3u : 0; }
    constexpr bool operator==(const Finding&) const = default;

private:
    explicit constexpr Finding(std::uint16_t code) : _code(code) {}
    std::uint16_t _code;
};

/// Checks every object that the root leads to, each once however often it is referred to. When `run`
/// returns true, the following holds for these objects, and whoever reads them relies on it:
///  - `BinaryLayout::find` succeeds, and every reference in them is in range;
///  - containers never hold themselves, and those that hold something nest at most 512 deep;
///  - no container is a key;
///  - dates are finite, UIDs fit 32 bits, UTF-16 strings are not empty;
///  - what they hold all together is in proportion to the size of the file, although objects may
///    overlap and dictionaries share their keys.
class Validator {
public:
    Validator(const BinaryLayout& layout, PropertyListError& fault, const BinaryBounds& bounds)
        : _layout(layout),
          _fault(fault),
          _bounds(bounds),
          _findings(layout.objectCount(), Finding::unvisited(), &_memory) {}

    bool run() { return visit(_layout.root(), 0); }

private:
    /// Leaves what it finds in `_findings`. `depth` counts the containers around the object.
    bool visit(std::size_t number, std::size_t depth) {
        const Finding known = _findings[number];
        if (known == Finding::inProgress()) return complain("a container that holds itself", number);
        if (known != Finding::unvisited()) {
            return depth + known.height() <= greatestDepth || complain(tooDeep, number);
        }
        BinaryObject object;
        if (!_layout.find(number, object, _fault)) return false;
        _objectBytes += object.end - object.start;
        if (_objectBytes / _bounds.overlap > _layout.fileSize()) {
            return complain("objects that overlap out of all proportion", number);
        }
        return isContainer(object.kind) ? visitContainer(number, object, depth) : visitScalar(number, object);
    }

    bool visitScalar(std::size_t number, const BinaryObject& object) {
        if (object.kind == BinaryKind::utf16String && object.count == 0) {
            return complain("an empty UTF-16 string", number);
        }
        const std::string_view content = _layout.content(object);
        constexpr std::size_t uidSize = sizeof(Uid::number);
        const std::string_view beyond = content.substr(0, content.size() - std::min(content.size(), uidSize));
        if (object.kind == BinaryKind::uid && beyond.find_first_not_of('\0') != std::string_view::npos) {
            return complain("a UID of more than 32 bits", number);
        }
        if (object.kind == BinaryKind::date && !std::isfinite(std::bit_cast<double>(readBigEndian(content)))) {
            return complain("a date that is no finite number", number);
        }
        _findings[number] = Finding::scalar();
        return true;
    }

    bool visitContainer(std::size_t number, const BinaryObject& object, std::size_t depth) {
        std::size_t height = 0;
        if (object.count > 0) {
            if (depth == greatestDepth) return complain(tooDeep, number);
            _findings[number] = Finding::inProgress();
            const bool isDictionary = object.kind == BinaryKind::dictionary;
            _values += isDictionary ? 2 * object.count : object.count;
            if (_values > _bounds.values) return complain("too many values", number);
            if (isDictionary && !visitKeys(number, object, depth + 1)) return false;
            const std::size_t first = isDictionary ? object.count : 0;
            if (!visitMembers(number, object, first, depth + 1, height)) return false;
            ++height;
        }
        _findings[number] = Finding::containerOf(height);
        return true;
    }

    bool visitKeys(std::size_t number, const BinaryObject& dictionary, std::size_t depth) {
        for (std::size_t index = 0; index < dictionary.count; ++index) {
            const std::uint64_t key = _layout.reference(dictionary, index);
            if (!isInRange(key, number)) return false;
            const bool isRepeated = _findings[key] != Finding::unvisited();
            if (!visit(key, depth)) return false;
            if (_findings[key].isContainer()) return complain("a dictionary with a container as a key", number);
            if (isRepeated && !accountForRepeatedKey(key)) return false;
        }
        return true;
    }

    bool accountForRepeatedKey(std::size_t key) {
        _repeatedKeyBytes += _layout.object(key).count;
        return _repeatedKeyBytes <= harmlessKeyBytes ||
               _repeatedKeyBytes / _bounds.keyRepetition <= _layout.fileSize() ||
               complain("a key that dictionaries share out of all proportion", key);
    }

    bool visitMembers(std::size_t number, const BinaryObject& container, std::size_t first, std::size_t depth,
                      std::size_t& height) {
        for (std::size_t index = first; index < first + container.count; ++index) {
            const std::uint64_t member = _layout.reference(container, index);
            if (!isInRange(member, number) || !visit(member, depth)) return false;
            height = std::max(height, _findings[member].height());
        }
        return true;
    }

    bool isInRange(std::uint64_t reference, std::size_t container) {
        return reference < _layout.objectCount() || complain("a reference to an object that is not there", container);
    }

    [[gnu::cold, gnu::noinline]] bool complain(const char* what, std::size_t number) {
        _fault = {std::string(what) + " (object " + std::to_string(number) + ")", _layout.offsetOf(number)};
        return false;
    }

    const BinaryLayout& _layout;
    PropertyListError& _fault;
    BinaryBounds _bounds;
    std::size_t _values = 0;
    std::size_t _objectBytes = 0;
    std::size_t _repeatedKeyBytes = 0;
    /// Settings files have few objects; what is known of these needs no memory from elsewhere.
    std::array<std::byte, 1024> _buffer;
    std::pmr::monotonic_buffer_resource _memory{_buffer.data(), _buffer.size()};
    std::pmr::vector<Finding> _findings;
};

/// The layout of a binary property list in which everything is in order.
std::optional<BinaryLayout> readValidLayout(std::string_view bytes, PropertyListError& error,
                                            const BinaryBounds& bounds = {}) {
    std::optional<BinaryLayout> layout = BinaryLayout::parse(bytes, error);
    if (layout && layout->objectCount() > bounds.values) {
        error = {"too many objects", bytes.size()};
        return std::nullopt;
    }
    return layout && Validator(*layout, error, bounds).run() ? layout : std::nullopt;
}

// -- Values ------------------------------------------------------------------------------------------

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

/// The UTF-8 of a string object.
std::string binaryString(const BinaryLayout& layout, const BinaryObject& object) {
    const std::string_view content = layout.content(object);
    if (object.kind == BinaryKind::utf16String) return utf8FromUtf16(content);
    return isAscii(content) ? std::string(content) : utf8FromLatin1(content);
}

/// Makes values of the objects of a validated binary property list, each object once: where objects
/// are shared, so are the values.
class BinaryReader {
public:
    explicit BinaryReader(const BinaryLayout& layout) : _layout(layout) {}

    Value value(std::size_t number);

private:
    Value scalar(const BinaryObject& object) const;
    Value shared(std::size_t number, const BinaryObject& object);
    Array members(const BinaryObject& object);
    Value dictionary(const BinaryObject& object);

    const BinaryLayout& _layout;
    /// What has been made of strings, data and containers, by number; null where nothing has yet.
    std::vector<Value> _made;
};

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

/// Whether a string object says the text. One that is all ASCII, as keys are, is not copied for it.
bool says(const BinaryLayout& layout, const BinaryObject& object, std::string_view text) {
    if (object.kind == BinaryKind::asciiString) {
        if (object.count == text.size() && layout.content(object) == text) return isAscii(text);
        return object.count < text.size() && !isAscii(text) && binaryString(layout, object) == text;
    }
    return object.kind == BinaryKind::utf16String && object.count <= text.size() &&
           binaryString(layout, object) == text;
}

}  // namespace

std::optional<Value> readBinary(std::string_view bytes, PropertyListError& error, const BinaryBounds& bounds) {
    const std::optional<BinaryLayout> layout = readValidLayout(bytes, error, bounds);
    return layout ? std::optional(BinaryReader(*layout).value(layout->root())) : std::nullopt;
}

std::optional<Dictionary> readBinaryRootKeys(std::string_view bytes, std::span<const std::string_view> keys) {
    PropertyListError unused;
    const std::optional<BinaryLayout> layout = readValidLayout(bytes, unused);
    if (!layout) return std::nullopt;
    const BinaryObject root = layout->object(layout->root());
    if (root.kind != BinaryKind::dictionary) return std::nullopt;
    BinaryReader reader(*layout);
    std::vector<Dictionary::Entry> entries;
    for (std::size_t index = 0; index < root.count; ++index) {
        const BinaryObject key = layout->object(layout->reference(root, index));
        const auto wanted = std::ranges::find_if(keys, [&](std::string_view text) { return says(*layout, key, text); });
        if (wanted == keys.end()) continue;
        entries.push_back({std::string(*wanted), reader.value(layout->reference(root, root.count + index))});
    }
    return Dictionary(std::move(entries), Dictionary::Duplicates::firstWins);
}

}  // namespace platform::property_list
