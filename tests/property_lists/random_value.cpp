// SPDX-License-Identifier: MIT
#include "tests/property_lists/random_value.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

using namespace platform;

Value RandomValues::value(int depth) {
    return depth > 0 && below(3) == 0 ? container(depth) : scalar();
}

Value RandomValues::container(int depth) {
    switch (below(_kinds == Kinds::all ? 3 : 2)) {
        case 0:
            return members(depth);
        case 1:
            return dictionary(depth);
        default:
            return Set{members(depth)};
    }
}

Value RandomValues::scalar() {
    switch (below(_kinds == Kinds::all ? 8 : 7)) {
        case 0:
            return below(2) == 0;
        case 1:
            return integer();
        case 2:
            return real();
        case 3:
            return text();
        case 4:
            return Date{std::floor(std::ldexp(real(), -20))};
        case 5:
            return Uid{static_cast<std::uint32_t>(_random())};
        case 6:
            return data();
        default:
            return Null();
    }
}

Integer RandomValues::integer() {
    const std::uint64_t bits = (std::uint64_t{_random()} << 32 | _random()) >> below(64);
    return below(2) == 0 ? Integer::fromUnsigned(bits) : Integer::fromSigned(static_cast<std::int64_t>(bits));
}

double RandomValues::real() {
    const double number = std::ldexp(static_cast<double>(_random()), static_cast<int>(below(40)) - 20);
    return below(2) == 0 ? number : -number;
}

std::string RandomValues::text() {
    static const std::string pieces[] = {
        "a", "<", "&", ">", "]]>", "\n", " ", "é", "€", "\"", "kavix", "\xF0\x9F\x98\x80", "\xEE\x80\x80"};
    std::string text;
    for (std::size_t count = below(20); count > 0; --count)
        text += pieces[below(std::size(pieces))];
    return text;
}

Data RandomValues::data() {
    Data bytes(below(150));
    for (std::byte& byte : bytes)
        byte = static_cast<std::byte>(_random() & 0xFF);
    return bytes;
}

Array RandomValues::members(int depth) {
    Array members;
    for (std::size_t count = below(6); count > 0; --count)
        members.push_back(value(depth - 1));
    return members;
}

Dictionary RandomValues::dictionary(int depth) {
    Dictionary dictionary;
    for (std::size_t count = below(6); count > 0; --count)
        dictionary.set(text(), value(depth - 1));
    if (_kinds == Kinds::all && below(8) == 0) dictionary.addOddEntry(integer(), value(depth - 1));
    return dictionary;
}
