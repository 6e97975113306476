// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/binary_validator.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string>
#include <vector>

#include "platform/foundation/property_list.h"
#include "platform/foundation/value.h"

namespace platform::property_list {

namespace {

/// Objects of a well-meant file do not overlap, so all of them together are no longer than the file.
/// Some overlap is allowed, but not so much that reading takes more than its share of memory.
constexpr std::size_t greatestOverlap = 4;

/// Each dictionary has its own copies of its keys, which may all share one object of the file. A
/// reference takes a byte at least, and keys are rarely longer than this.
constexpr std::size_t greatestKeyRepetition = 64;

/// So much repetition does no harm, however small the file. What is read is often written to a smaller
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

class Validator {
public:
    Validator(const BinaryLayout& layout, PropertyListError& fault)
        : _layout(layout), _fault(fault), _findings(layout.objectCount(), Finding::unvisited(), &_memory) {}

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
        if (_objectBytes / greatestOverlap > _layout.fileSize()) {
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
               _repeatedKeyBytes / greatestKeyRepetition <= _layout.fileSize() ||
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
    std::size_t _objectBytes = 0;
    std::size_t _repeatedKeyBytes = 0;
    /// Settings files have few objects; what is known of these needs no memory from elsewhere.
    std::array<std::byte, 1024> _buffer;
    std::pmr::monotonic_buffer_resource _memory{_buffer.data(), _buffer.size()};
    std::pmr::vector<Finding> _findings;
};

}  // namespace

bool validateBinary(const BinaryLayout& layout, PropertyListError& fault) {
    return Validator(layout, fault).run();
}

std::optional<BinaryLayout> readValidLayout(std::string_view bytes, PropertyListError& fault) {
    std::optional<BinaryLayout> layout = BinaryLayout::parse(bytes, fault);
    return layout && validateBinary(*layout, fault) ? layout : std::nullopt;
}

}  // namespace platform::property_list
