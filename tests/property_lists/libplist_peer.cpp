// SPDX-License-Identifier: MIT
#include "tests/property_lists/libplist_peer.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace peers {
namespace {

using namespace platform;

struct FreeNode {
    void operator()(void* node) const { plist_free(node); }
};
using Root = std::unique_ptr<void, FreeNode>;

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
using Iterator = std::unique_ptr<void, FreeMemory>;
using Text = std::unique_ptr<char, FreeMemory>;

std::optional<std::string> xmlOf(plist_t node) {
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node, &bytes, &length);
    const Text owner(bytes);
    return bytes ? std::optional(std::string(bytes, length)) : std::nullopt;
}

std::optional<std::string> binaryOf(plist_t node) {
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    const Text owner(bytes);
    return bytes ? std::optional(std::string(bytes, length)) : std::nullopt;
}

class Converter {
public:
    explicit Converter(Dictionary::Duplicates duplicates) : _duplicates(duplicates) {}

    Value value(plist_t node) const {
        switch (plist_get_node_type(node)) {
            case PLIST_BOOLEAN:
                return boolean(node);
            case PLIST_UINT:
                return integer(node);
            case PLIST_REAL:
                return real(node);
            case PLIST_STRING:
                return std::string(plist_get_string_ptr(node, nullptr));
            case PLIST_ARRAY:
                return array(node);
            case PLIST_DICT:
                return dictionary(node);
            case PLIST_DATE:
                return date(node);
            case PLIST_DATA:
                return data(node);
            case PLIST_UID:
                return uid(node);
            default:
                return Null();
        }
    }

private:
    static Value boolean(plist_t node) {
        std::uint8_t flag = 0;
        plist_get_bool_val(node, &flag);
        return flag != 0;
    }

    /// The number comes without its sign; only what libplist writes has it.
    static Value integer(plist_t node) {
        std::uint64_t bits = 0;
        plist_get_uint_val(node, &bits);
        const bool isNegative = bits > INT64_MAX && xmlOf(node).value_or("").find("<integer>-") != std::string::npos;
        return isNegative ? Integer::fromSigned(static_cast<std::int64_t>(bits)) : Integer::fromUnsigned(bits);
    }

    static Value real(plist_t node) {
        double number = 0;
        plist_get_real_val(node, &number);
        return number;
    }

    static Value date(plist_t node) {
        std::int32_t seconds = 0;
        std::int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return Date{seconds + microseconds / 1e6};
    }

    static Value data(plist_t node) {
        std::uint64_t length = 0;
        const auto* bytes = reinterpret_cast<const std::byte*>(plist_get_data_ptr(node, &length));
        return Data(bytes, bytes + length);
    }

    static Value uid(plist_t node) {
        std::uint64_t number = 0;
        plist_get_uid_val(node, &number);
        return Uid{static_cast<std::uint32_t>(number)};
    }

    Value array(plist_t node) const {
        Array items;
        const std::uint32_t size = plist_array_get_size(node);
        for (std::uint32_t index = 0; index < size; ++index)
            items.push_back(value(plist_array_get_item(node, index)));
        return items;
    }

    Value dictionary(plist_t node) const {
        plist_dict_iter iterator = nullptr;
        plist_dict_new_iter(node, &iterator);
        const Iterator owner(iterator);
        std::vector<Dictionary::Entry> entries;
        for (;;) {
            char* key = nullptr;
            plist_t entry = nullptr;
            plist_dict_next_item(node, iterator, &key, &entry);
            const Text keyOwner(key);
            if (!entry) break;
            entries.push_back({key, value(entry)});
        }
        return Dictionary(std::move(entries), _duplicates);
    }

    Dictionary::Duplicates _duplicates;
};

Root parse(std::string_view bytes, PropertyListFormat format) {
    const auto length = static_cast<std::uint32_t>(bytes.size());
    plist_t root = nullptr;
    if (format == PropertyListFormat::binary) {
        plist_from_bin(bytes.data(), length, &root);
    } else {
        plist_from_xml(bytes.data(), length, &root);
    }
    return Root(root);
}

Value valueOf(const Root& root, PropertyListFormat format) {
    if (format == PropertyListFormat::binary) return Converter(Dictionary::Duplicates::firstWins).value(root.get());
    return withXmlUids(Converter(Dictionary::Duplicates::lastWins).value(root.get()));
}

}  // namespace

PeerReading readByLibplist(std::string_view bytes, PropertyListFormat format) {
    const Root root = parse(bytes, format);
    if (!root) return {};
    return {valueOf(root, format), {}, {}};
}

PeerReading readAndWriteByLibplist(std::string_view bytes, PropertyListFormat format) {
    const Root root = parse(bytes, format);
    if (!root) return {};
    return {valueOf(root, format), xmlOf(root.get()), binaryOf(root.get())};
}

}  // namespace peers
