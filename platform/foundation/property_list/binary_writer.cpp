// SPDX-License-Identifier: MIT
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "platform/foundation/property_list.h"
#include "platform/foundation/utf8.h"

namespace platform {

namespace property_list {

namespace {

/// The least of 1, 2, 4 and 8 bytes that hold a number.
std::size_t sizeOf(std::uint64_t number) {
    if (number <= 0xFF) return 1;
    if (number <= 0xFFFF) return 2;
    return number <= 0xFFFFFFFF ? 4 : 8;
}

void appendBigEndian(std::string& bytes, std::uint64_t number, std::size_t size) {
    for (std::size_t left = size; left > 0; --left) {
        bytes.push_back(left > 8 ? '\0' : static_cast<char>(number >> (8 * (left - 1)) & 0xFF));
    }
}

void appendMarker(std::string& bytes, unsigned high, std::size_t low) {
    bytes.push_back(static_cast<char>(high << 4 | low));
}

/// Bytes of the sizes 1, 2, 4, 8 and 16 are told by their logarithm.
void appendSized(std::string& bytes, unsigned high, std::uint64_t number, std::size_t size) {
    appendMarker(bytes, high, static_cast<std::size_t>(std::countr_zero(size)));
    appendBigEndian(bytes, number, size);
}

void appendCounted(std::string& bytes, unsigned high, std::size_t count) {
    appendMarker(bytes, high, std::min<std::size_t>(count, 0xF));
    if (count >= 0xF) appendSized(bytes, 0x1, count, sizeOf(count));
}

std::string encoded(Null) {
    return std::string(1, '\x00');
}
std::string encoded(bool flag) {
    return std::string(1, flag ? '\x09' : '\x08');
}
/// One, two and four bytes are read as unsigned, eight as signed.
std::string encoded(Integer number) {
    std::string bytes;
    const std::size_t size = number.aboveSigned ? 16 : number.isNegative() ? 8 : sizeOf(number.bits);
    appendSized(bytes, 0x1, number.bits, size);
    return bytes;
}
std::string encoded(double number) {
    std::string bytes;
    appendSized(bytes, 0x2, std::bit_cast<std::uint64_t>(number), 8);
    return bytes;
}
std::string encoded(Date date) {
    std::string bytes;
    appendSized(bytes, 0x3, std::bit_cast<std::uint64_t>(date.secondsSince2001), 8);
    return bytes;
}
std::string encoded(Uid uid) {
    std::string bytes;
    const std::size_t size = sizeOf(uid.number);
    appendMarker(bytes, 0x8, size - 1);
    appendBigEndian(bytes, uid.number, size);
    return bytes;
}
/// A text or data. Such content may be as large as all else together: it stays where it is in the
/// value until its turn to be written.
struct BytesObject {
    unsigned marker = 0;
    std::size_t count = 0;  ///< of what the marker counts: bytes, or units of UTF-16
    std::string_view content;
};

constexpr unsigned dataMarker = 0x4;
constexpr unsigned asciiMarker = 0x5;
constexpr unsigned utf16Marker = 0x6;

BytesObject bytesObject(std::string_view text) {
    if (isAscii(text)) return {asciiMarker, text.size(), text};
    return {utf16Marker, utf16Length(text), text};
}
BytesObject bytesObject(const Data& data) {
    return {dataMarker, data.size(), {reinterpret_cast<const char*>(data.data()), data.size()}};
}

/// A container's members by their numbers; in a dictionary all keys and then all values.
struct ContainerObject {
    unsigned marker = 0;
    std::size_t count = 0;
    std::vector<std::size_t> references;
};

/// A small scalar by its encoded form, or larger content.
using Object = std::variant<const std::string*, BytesObject, ContainerObject>;

/// Gives every distinct object of a value a number, depth first from the root: small scalars are told
/// apart by their encoded form, texts and data by their content, containers by their identity. The
/// value outlives the table.
class ObjectTable {
public:
    /// False when the value cannot be written; then `reason()` says why. To be called once.
    bool add(const Value& root) { return place(root).has_value(); }

    const std::vector<Object>& objects() const { return _objects; }
    const char* reason() const { return _reason; }

private:
    /// An object's number, and how many containers that hold something nest in it, itself counted.
    struct Place {
        std::size_t number = 0;
        std::size_t height = 0;
    };
    using Placed = std::optional<Place>;

    Placed place(const Value& value) {
        return std::visit([this](const auto& content) { return placeOf(content); }, value.storage());
    }

    template <class Scalar>
    Placed placeOf(const Scalar& scalar) {
        return placeEncoded(encoded(scalar));
    }

    Placed placeOf(Date date) {
        if (!std::isfinite(date.secondsSince2001)) return refuse("a date that is no finite number");
        return placeEncoded(encoded(date));
    }

    /// What is shared is looked at once.
    template <class Content>
    Placed placeOf(const std::shared_ptr<const Content>& content) {
        const auto known = _shared.find(content.get());
        if (known != _shared.end()) {
            if (_depth + known->second.height > greatestDepth) return refuse(tooDeep);
            return known->second;
        }
        const Placed placed = placeNew(*content);
        if (placed && content.use_count() > 1) _shared.emplace(content.get(), *placed);
        return placed;
    }

    Placed placeNew(const std::string& text) { return placeText(text); }
    Placed placeNew(const Data& data) { return placeBytes(_data, bytesObject(data)); }
    Placed placeNew(const Array& array) { return placeSequence(0xA, array); }
    Placed placeNew(const Set& set) { return placeSequence(0xC, set.members); }

    Placed placeText(std::string_view text) {
        if (!isValidUtf8(text)) return refuse("text that is not valid UTF-8");
        return placeBytes(_texts, bytesObject(text));
    }

    /// Bytes that a file chooses are put in order, not hashed: they could all be chosen to have one hash. Most differ
    /// in length, which is compared first.
    struct ShorterOrLess {
        bool operator()(std::string_view left, std::string_view right) const {
            return left.size() != right.size() ? left.size() < right.size() : left < right;
        }
    };
    using BytesNumbers = std::map<std::string_view, std::size_t, ShorterOrLess>;

    Placed placeBytes(BytesNumbers& known, const BytesObject& bytes) {
        const auto [place, isNew] = known.try_emplace(bytes.content, _objects.size());
        if (isNew) _objects.emplace_back(bytes);
        return Place{place->second, 0};
    }

    Placed placeEncoded(std::string bytes) {
        const auto [scalar, isNew] = _scalars.try_emplace(std::move(bytes), _objects.size());
        if (isNew) _objects.emplace_back(&scalar->first);
        return Place{scalar->second, 0};
    }

    /// Collects the references of a container that is being placed.
    struct Members {
        std::vector<std::size_t> references;
        std::size_t height = 0;

        bool add(const Placed& member) {
            if (!member) return false;
            references.push_back(member->number);
            height = std::max(height, member->height);
            return true;
        }
    };

    Placed placeSequence(unsigned marker, const std::vector<Value>& values) {
        return placeContainer(marker, values.size(), [&](Members& members) {
            return std::all_of(values.begin(), values.end(),
                               [&](const Value& member) { return members.add(place(member)); });
        });
    }

    Placed placeNew(const Dictionary& dictionary) {
        const auto& odd = dictionary.oddEntries();
        return placeContainer(0xD, dictionary.size() + odd.size(), [&](Members& members) {
            const auto addAll = [](const auto& entries, auto add) {
                return std::all_of(entries.begin(), entries.end(), add);
            };
            return addAll(dictionary, [&](const auto& entry) { return members.add(placeText(entry.key)); }) &&
                   addAll(odd, [&](const auto& entry) { return members.add(placeKey(entry.first)); }) &&
                   addAll(dictionary, [&](const auto& entry) { return members.add(place(entry.value)); }) &&
                   addAll(odd, [&](const auto& entry) { return members.add(place(entry.second)); });
        });
    }

    Placed placeKey(const Value& key) {
        if (key.array() || key.set() || key.dictionary()) return refuse("a container as a key");
        return place(key);
    }

    template <class AddMembers>
    Placed placeContainer(unsigned marker, std::size_t count, AddMembers addMembers) {
        const std::size_t number = _objects.size();
        _objects.emplace_back(ContainerObject{marker, count, {}});
        if (count == 0) return Place{number, 0};
        if (_depth == greatestDepth) return refuse(tooDeep);
        ++_depth;
        Members members;
        if (!addMembers(members)) return std::nullopt;
        --_depth;
        std::get<ContainerObject>(_objects[number]).references = std::move(members.references);
        return Place{number, members.height + 1};
    }

    std::nullopt_t refuse(const char* reason) {
        _reason = reason;
        return std::nullopt;
    }

    std::vector<Object> _objects;
    std::map<std::string, std::size_t, ShorterOrLess> _scalars;
    BytesNumbers _texts;
    BytesNumbers _data;
    std::unordered_map<const void*, Place> _shared;
    std::size_t _depth = 0;
    const char* _reason = "";
};

/// Appends the objects' encoded forms.
class ObjectWriter {
public:
    ObjectWriter(std::string& bytes, std::size_t referenceSize) : _bytes(bytes), _referenceSize(referenceSize) {}

    void operator()(const std::string* scalar) { _bytes += *scalar; }

    void operator()(const BytesObject& object) {
        appendCounted(_bytes, object.marker, object.count);
        if (object.marker == utf16Marker) {
            appendUtf16FromUtf8(_bytes, object.content);
        } else {
            _bytes += object.content;
        }
    }

    void operator()(const ContainerObject& container) {
        appendCounted(_bytes, container.marker, container.count);
        for (const std::size_t reference : container.references)
            appendBigEndian(_bytes, reference, _referenceSize);
    }

private:
    std::string& _bytes;
    std::size_t _referenceSize;
};

/// At least the bytes of all objects' encoded forms, and little more: room that is made once costs
/// less memory than room that grows under a large text.
std::size_t roomFor(const std::vector<Object>& objects, std::size_t referenceSize) {
    constexpr std::size_t markerRoom = 1 + 1 + sizeof(std::uint64_t);
    struct Room {
        std::size_t operator()(const std::string* scalar) const { return scalar->size(); }
        std::size_t operator()(const BytesObject& object) const {
            return object.marker == utf16Marker ? 2 * object.count : object.count;
        }
        std::size_t operator()(const ContainerObject& container) const {
            return container.references.size() * referenceSize;
        }
        std::size_t referenceSize;
    };
    std::size_t room = 0;
    for (const Object& object : objects)
        room += markerRoom + std::visit(Room{referenceSize}, object);
    return room;
}

std::string assembled(const std::vector<Object>& objects) {
    constexpr std::string_view header = "bplist00";
    constexpr std::size_t trailerLength = 32;
    const std::size_t referenceSize = sizeOf(objects.size());
    const std::size_t room = header.size() + roomFor(objects, referenceSize);
    std::string bytes;
    bytes.reserve(room + objects.size() * sizeOf(room) + trailerLength);
    bytes += header;
    std::vector<std::size_t> offsets;
    offsets.reserve(objects.size());
    for (const Object& object : objects) {
        offsets.push_back(bytes.size());
        std::visit(ObjectWriter{bytes, referenceSize}, object);
    }
    const std::size_t table = bytes.size();
    const std::size_t offsetSize = sizeOf(table);
    for (const std::size_t offset : offsets)
        appendBigEndian(bytes, offset, offsetSize);
    bytes.append(6, '\0');
    appendBigEndian(bytes, offsetSize, 1);
    appendBigEndian(bytes, referenceSize, 1);
    appendBigEndian(bytes, objects.size(), 8);
    appendBigEndian(bytes, 0, 8);
    appendBigEndian(bytes, table, 8);
    return bytes;
}

}  // namespace

}  // namespace property_list

PropertyListWriting writeBinaryPropertyList(const Value& root) {
    property_list::ObjectTable table;
    if (!table.add(root)) return {std::nullopt, table.reason()};
    return {property_list::assembled(table.objects()), {}};
}

}  // namespace platform
