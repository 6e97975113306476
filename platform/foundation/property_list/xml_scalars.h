// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/ascii.h"
#include "platform/foundation/value.h"

/// How an XML property list spells numbers, and dates: in the Gregorian calendar, carried on in both
/// directions.
namespace platform::property_list {

/// What stands at the front of a text, and how far it reaches.
template <class Number>
struct Parsed {
    Number number;
    const char* end;
};

/// Reads digits from the position on, which moves to the first character that is none. Nothing when
/// there is none at all, or the number needs more than 64 bits.
template <unsigned base>
std::optional<std::uint64_t> takeDigits(const char*& position, const char* end) {
    constexpr std::uint64_t greatest = std::numeric_limits<std::uint64_t>::max();
    const char* const begin = position;
    std::uint64_t number = 0;
    for (; position != end; ++position) {
        const unsigned digit = digitValue(*position);
        if (digit >= base) break;
        if (number > greatest / base || number * base > greatest - digit) return std::nullopt;
        number = number * base + digit;
    }
    return position == begin ? std::nullopt : std::optional(number);
}

/// An integer at the front of the text: bytes up to 0x20, a sign, blanks, then decimal digits or
/// `0x` and hexadecimal ones. Nothing when there is none or it leaves the range −2^63 … 2^64−1.
std::optional<Parsed<Integer>> parseInteger(const char* begin, const char* end);

/// A real that is the whole text: blanks, a sign, decimal digits with a point and an exponent; or
/// an infinity or `nan` in any case, but without blanks. What is too great for a double is infinite.
std::optional<double> parseReal(std::string_view text);

void appendInteger(std::string& text, Integer number);
void appendReal(std::string& text, double number);

/// A date at the front of the text, `[-]Y…-MM-DDThh:mm:ssZ`, with a year of 32 bits. Days, hours,
/// minutes and seconds out of range roll over; so does month 13, while months 0 and from 14 on
/// count as January.
std::optional<Parsed<Date>> parseDate(const char* begin, const char* end);

/// Fractions of a second are floored. False when the date lies in no year of 32 bits.
bool appendDate(std::string& text, Date date);

}  // namespace platform::property_list
