// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/foundation/export.h"

namespace platform {

class Value;
class Dictionary;

/// The null object: a binary property list can hold it, an XML one cannot.
struct Null {
    bool operator==(const Null&) const = default;
};

/// A property-list integer, from −2^63 to 2^64−1: the union of what signed and unsigned 64-bit
/// numbers can say. `bits` is the two's complement form; `aboveSigned` is true only for values from
/// 2^63 on, so that every number has exactly one representation.
struct Integer {
    std::uint64_t bits = 0;
    bool aboveSigned = false;

    static constexpr Integer fromSigned(std::int64_t number) { return {static_cast<std::uint64_t>(number), false}; }
    static constexpr Integer fromUnsigned(std::uint64_t number) {
        return {number, number > static_cast<std::uint64_t>(INT64_MAX)};
    }
    constexpr bool isNegative() const { return !aboveSigned && static_cast<std::int64_t>(bits) < 0; }
    bool operator==(const Integer&) const = default;
};

/// A point in time, in seconds since 2001-01-01T00:00:00Z.
struct Date {
    double secondsSince2001 = 0;
    bool operator==(const Date&) const = default;
};

/// A keyed archiver's reference to another of its objects.
struct Uid {
    std::uint32_t number = 0;
    bool operator==(const Uid&) const = default;
};

using Data = std::vector<std::byte>;
using Array = std::vector<Value>;

/// An unordered collection; only binary property lists hold one. Its members stand, and compare, in
/// the order of the file.
struct Set {
    std::vector<Value> members;
};

/// One property-list value. Copies are cheap: strings, data and containers are immutable and shared,
/// so a file whose objects refer to each other many times costs no more memory than its own objects.
/// Strings are UTF-8 and may hold U+0000.
class TRIVEL3_PLATFORM_EXPORT Value {
public:
    using Storage = std::variant<Null, bool, Integer, double, std::shared_ptr<const std::string>, Date, Uid,
                                 std::shared_ptr<const Data>, std::shared_ptr<const Array>,
                                 std::shared_ptr<const Dictionary>, std::shared_ptr<const Set>>;

    Value() = default;
    Value(Null) {}
    Value(bool flag) : _storage(flag) {}
    Value(int number) : _storage(Integer::fromSigned(number)) {}
    Value(std::int64_t number) : _storage(Integer::fromSigned(number)) {}
    Value(std::uint64_t number) : _storage(Integer::fromUnsigned(number)) {}
    Value(Integer number) : _storage(number) {}
    Value(double number) : _storage(number) {}
    Value(const char* text) : Value(std::string_view(text)) {}
    Value(std::string_view text);
    Value(std::string text);
    Value(Date date) : _storage(date) {}
    Value(Uid uid) : _storage(uid) {}
    Value(Data data);
    Value(Array array);
    Value(Dictionary dictionary);
    Value(Set set);
    /// A null pointer gives the null object.
    Value(std::shared_ptr<const Data> data) : _storage(orNull(std::move(data))) {}
    Value(std::shared_ptr<const Array> array) : _storage(orNull(std::move(array))) {}
    Value(std::shared_ptr<const Dictionary> dictionary) : _storage(orNull(std::move(dictionary))) {}
    Value(std::shared_ptr<const Set> set) : _storage(orNull(std::move(set))) {}

    const Storage& storage() const { return _storage; }

    bool isNull() const { return std::holds_alternative<Null>(_storage); }

    /// Each returns the content when the value is of that kind, else a null pointer. No conversion:
    /// a boolean is no integer and an integer no real.
    const bool* boolean() const { return std::get_if<bool>(&_storage); }
    const Integer* integer() const { return std::get_if<Integer>(&_storage); }
    const double* real() const { return std::get_if<double>(&_storage); }
    const std::string* string() const { return pointee<std::string>(); }
    const Date* date() const { return std::get_if<Date>(&_storage); }
    const Uid* uid() const { return std::get_if<Uid>(&_storage); }
    const Data* data() const { return pointee<Data>(); }
    const Array* array() const { return pointee<Array>(); }
    const Dictionary* dictionary() const { return pointee<Dictionary>(); }
    const Set* set() const { return pointee<Set>(); }

    /// Same kind and same content, in depth; reals and dates compare by their bits, so that a value
    /// read twice equals itself. Takes time in proportion to the distinct objects, not to the tree
    /// that shared objects unfold to.
    bool operator==(const Value& other) const;

private:
    template <class T>
    static Storage orNull(std::shared_ptr<const T> content) {
        return content ? Storage(std::move(content)) : Storage(Null());
    }

    template <class T>
    const T* pointee() const {
        auto* held = std::get_if<std::shared_ptr<const T>>(&_storage);
        return held ? held->get() : nullptr;
    }

    Storage _storage;
};

/// String keys to values, each key once. It keeps no order of its own: iteration runs in ascending
/// order of the keys' UTF-16 code units, the order in which the platform writes them.
class TRIVEL3_PLATFORM_EXPORT Dictionary {
public:
    struct Entry {
        std::string key;
        Value value;
    };
    using const_iterator = std::vector<Entry>::const_iterator;

    Dictionary() = default;
    Dictionary(std::initializer_list<Entry> entries);

    /// Which of several entries with the same key counts.
    enum class Duplicates { firstWins, lastWins };
    /// Takes entries in any order.
    Dictionary(std::vector<Entry> entries, Duplicates duplicates);

    /// As iteration, these know nothing of odd entries.
    bool empty() const { return _entries.empty(); }
    std::size_t size() const { return _entries.size(); }
    const_iterator begin() const { return _entries.begin(); }
    const_iterator end() const { return _entries.end(); }

    /// The value under the key, or a null pointer.
    const Value* find(std::string_view key) const;
    /// The same as a value of one's own, or nothing.
    std::optional<Value> valueForKey(std::string_view key) const;
    bool contains(std::string_view key) const { return find(key) != nullptr; }
    void set(std::string_view key, Value value);
    void remove(std::string_view key);

    /// Entries whose key is no string. Only binary property lists hold such entries; they are kept
    /// so that reading loses nothing, and XML cannot say them.
    const std::vector<std::pair<Value, Value>>& oddEntries() const { return _oddEntries; }
    void addOddEntry(Value key, Value value);

private:
    std::vector<Entry> _entries;
    std::vector<std::pair<Value, Value>> _oddEntries;
};

/// Ascending order of UTF-16 code units, computed on UTF-8: characters from U+10000 on sort before
/// U+E000 to U+FFFF.
TRIVEL3_PLATFORM_EXPORT bool precedesInUtf16Order(std::string_view left, std::string_view right);

/// The platform's conversion to a signed machine-word integer (`integerValue`): a boolean gives 0 or
/// 1, a real is cut towards zero and held to the range, an unsigned integer wraps, a string gives
/// the decimal number it starts with. Kinds without that conversion, and nothing, give 0.
TRIVEL3_PLATFORM_EXPORT std::int64_t integerValue(const Value& value);
TRIVEL3_PLATFORM_EXPORT std::int64_t integerValue(const std::optional<Value>& value);

/// The platform's truth value (`boolValue`): a number is true unless it is zero; a string is true
/// when, after blanks, a sign and zeros, it starts with Y, y, T, t or a digit from 1 to 9. Kinds
/// without that conversion, and nothing, give false.
TRIVEL3_PLATFORM_EXPORT bool boolValue(const Value& value);
TRIVEL3_PLATFORM_EXPORT bool boolValue(const std::optional<Value>& value);

}  // namespace platform
