// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_scalars.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace platform::property_list {

namespace {

std::optional<Integer> withSign(bool negative, std::uint64_t magnitude) {
    constexpr std::uint64_t twoToThe63 = std::uint64_t{1} << 63;
    if (!negative) return Integer::fromUnsigned(magnitude);
    if (magnitude > twoToThe63) return std::nullopt;
    return Integer{~magnitude + 1, false};
}

}  // namespace

std::optional<Parsed<Integer>> parseInteger(const char* begin, const char* end) {
    const char* position = begin;
    while (position != end && static_cast<unsigned char>(*position) <= ' ')
        ++position;
    const bool negative = position != end && *position == '-';
    if (position != end && (*position == '-' || *position == '+')) ++position;
    while (position != end && isBlank(*position))
        ++position;
    const bool hexadecimal = end - position >= 2 && position[0] == '0' && (position[1] == 'x' || position[1] == 'X');
    if (hexadecimal) position += 2;
    const std::optional<std::uint64_t> magnitude =
        hexadecimal ? takeDigits<16>(position, end) : takeDigits<10>(position, end);
    const std::optional<Integer> number = magnitude ? withSign(negative, *magnitude) : std::nullopt;
    return number ? std::optional(Parsed<Integer>{*number, position}) : std::nullopt;
}

namespace {

std::optional<double> parseNamedReal(std::string_view text) {
    if (equalInAnyCase(text, "nan")) return std::numeric_limits<double>::quiet_NaN();
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    if (!equalInAnyCase(text, "inf") && !equalInAnyCase(text, "infinity")) return std::nullopt;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return negative ? -infinity : infinity;
}

/// The parts of a decimal number without its sign.
struct Decimal {
    std::string_view whole;
    std::string_view fraction;
    std::string_view exponent;  ///< with its sign
};

std::string_view takeWhileDigits(std::string_view& text) {
    const auto length = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
    const std::string_view digits = text.substr(0, length);
    text.remove_prefix(length);
    return digits;
}

std::optional<Decimal> splitDecimal(std::string_view text) {
    Decimal decimal;
    decimal.whole = takeWhileDigits(text);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        decimal.fraction = takeWhileDigits(text);
    }
    if (decimal.whole.empty() && decimal.fraction.empty()) return std::nullopt;
    if (text.starts_with('e') || text.starts_with('E')) {
        decimal.exponent = text.substr(1);
        text.remove_prefix(
            text.starts_with("e+") || text.starts_with("e-") || text.starts_with("E+") || text.starts_with("E-") ? 2
                                                                                                                 : 1);
        if (takeWhileDigits(text).empty()) return std::nullopt;
    }
    return text.empty() ? std::optional(decimal) : std::nullopt;
}

/// Whether a decimal that no double comes near is too great, not too small: its first digit that is
/// not zero stands before the point once the exponent has moved it. Exponents are held to a range
/// that no text's length reaches.
bool isTooGreat(const Decimal& decimal) {
    constexpr std::int64_t bound = std::numeric_limits<std::int64_t>::max() / 4;
    std::string_view exponentText = decimal.exponent;
    if (exponentText.starts_with('+')) exponentText.remove_prefix(1);
    std::int64_t exponent = 0;
    const auto result = std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    if (result.ec == std::errc::result_out_of_range) exponent = exponentText.starts_with('-') ? -bound : bound;
    exponent = std::clamp(exponent, -bound, bound);

    const std::size_t inWhole = decimal.whole.find_first_not_of('0');
    if (inWhole != std::string_view::npos)
        return static_cast<std::int64_t>(decimal.whole.size() - inWhole) + exponent > 0;
    const std::size_t inFraction = decimal.fraction.find_first_not_of('0');
    return exponent - static_cast<std::int64_t>(std::min(inFraction, decimal.fraction.size())) > 0;
}

std::optional<double> parseDecimal(std::string_view text) {
    const std::optional<Decimal> decimal = splitDecimal(text);
    if (!decimal) return std::nullopt;
    double number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc()) return number;
    return isTooGreat(*decimal) ? std::numeric_limits<double>::infinity() : 0.0;
}

}  // namespace

std::optional<double> parseReal(std::string_view text) {
    if (const auto named = parseNamedReal(text)) return named;
    text.remove_prefix(static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isBlank) - text.begin()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    const std::optional<double> magnitude = parseDecimal(text);
    return magnitude && negative ? std::optional(-*magnitude) : magnitude;
}

void appendInteger(std::string& text, Integer number) {
    char digits[24];
    const auto result = number.isNegative()
                            ? std::to_chars(digits, digits + sizeof digits, static_cast<std::int64_t>(number.bits))
                            : std::to_chars(digits, digits + sizeof digits, number.bits);
    text.append(digits, result.ptr);
}

void appendReal(std::string& text, double number) {
    if (std::isnan(number)) {
        text += "nan";
    } else if (std::isinf(number)) {
        text += number < 0 ? "-infinity" : "+infinity";
    } else if (number == 0) {
        text += "0.0";
    } else {
        char digits[32];
        const auto result = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 17);
        text.append(digits, result.ptr);
    }
}

// -- Dates -----------------------------------------------------------------------------------------

namespace {

constexpr std::int64_t secondsPerDay = 86400;

std::int64_t floorDivide(std::int64_t number, std::int64_t by) {
    return number / by - (number % by < 0 ? 1 : 0);
}

/// Days from 2001-01-01 to the first day of the year, in the Gregorian calendar carried on in both
/// directions without end.
std::int64_t daysBeforeYear(std::int64_t year) {
    const std::int64_t before = year - 1;
    const std::int64_t leapDays = floorDivide(before, 4) - floorDivide(before, 100) + floorDivide(before, 400);
    constexpr std::int64_t daysBefore2001 = 2000 * 365 + 500 - 20 + 5;
    return before * 365 + leapDays - daysBefore2001;
}

bool isLeapYear(std::int64_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// Months from 1 to 13, the last of them the next January.
std::int64_t daysBeforeMonth(int month, bool leapYear) {
    constexpr std::array<std::int16_t, 13> days{0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
    return days[static_cast<std::size_t>(month - 1)] + (leapYear && month > 2 ? 1 : 0);
}

/// Reads a date's parts one after the other, and remembers whether all of them were there.
class DateParts {
public:
    DateParts(const char* begin, const char* end) : _position(begin), _end(end) {}

    std::int64_t year() {
        const bool negative = accept('-');
        const std::optional<std::uint64_t> magnitude = takeDigits<10>(_position, _end);
        constexpr std::uint64_t greatest = std::numeric_limits<std::int32_t>::max();
        if (!magnitude || *magnitude > greatest) return _complete = false;
        const auto year = static_cast<std::int64_t>(*magnitude);
        return negative ? -year : year;
    }

    int twoDigits(char separatorBefore) {
        separator(separatorBefore);
        if (_end - _position < 2 || !isDigit(_position[0]) || !isDigit(_position[1])) return _complete = false;
        _position += 2;
        return (_position[-2] - '0') * 10 + (_position[-1] - '0');
    }

    void separator(char wanted) {
        if (!accept(wanted)) _complete = false;
    }

    bool complete() const { return _complete; }
    const char* position() const { return _position; }

private:
    bool accept(char wanted) {
        if (_position == _end || *_position != wanted) return false;
        ++_position;
        return true;
    }

    const char* _position;
    const char* _end;
    bool _complete = true;
};

}  // namespace

std::optional<Parsed<Date>> parseDate(const char* begin, const char* end) {
    DateParts parts(begin, end);
    const std::int64_t year = parts.year();
    const int month = parts.twoDigits('-');
    const int day = parts.twoDigits('-');
    const int hour = parts.twoDigits('T');
    const int minute = parts.twoDigits(':');
    const int second = parts.twoDigits(':');
    parts.separator('Z');
    if (!parts.complete()) return std::nullopt;

    const int knownMonth = month >= 1 && month <= 13 ? month : 1;
    const std::int64_t days = daysBeforeYear(year) + daysBeforeMonth(knownMonth, isLeapYear(year)) + day - 1;
    const std::int64_t seconds = days * secondsPerDay + hour * 3600 + minute * 60 + second;
    return Parsed<Date>{Date{static_cast<double>(seconds)}, parts.position()};
}

namespace {

void appendPadded(std::string& text, std::int64_t number, std::size_t width) {
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, number < 0 ? -number : number);
    const auto length = static_cast<std::size_t>(result.ptr - digits) + (number < 0 ? 1 : 0);
    if (number < 0) text += '-';
    if (length < width) text.append(width - length, '0');
    text.append(digits, result.ptr);
}

/// The year that a day lies in, counted from 2001-01-01.
std::int64_t yearOfDay(std::int64_t day) {
    constexpr std::int64_t daysIn400Years = 146097;
    std::int64_t year = 2001 + day * 400 / daysIn400Years;
    while (daysBeforeYear(year) > day)
        --year;
    while (daysBeforeYear(year + 1) <= day)
        ++year;
    return year;
}

}  // namespace

bool appendDate(std::string& text, Date date) {
    constexpr double secondsIn32BitYears = 2147483647.0 * 365.2425 * secondsPerDay;
    if (!(std::abs(date.secondsSince2001) < secondsIn32BitYears)) return false;
    const auto wholeSeconds = static_cast<std::int64_t>(std::floor(date.secondsSince2001));
    const std::int64_t day = floorDivide(wholeSeconds, secondsPerDay);
    const std::int64_t second = wholeSeconds - day * secondsPerDay;

    const std::int64_t year = yearOfDay(day);
    const std::int64_t dayOfYear = day - daysBeforeYear(year);
    int month = 12;
    while (daysBeforeMonth(month, isLeapYear(year)) > dayOfYear)
        --month;

    appendPadded(text, year, 4);
    const auto appendPart = [&](char separator, std::int64_t number) {
        text += separator;
        appendPadded(text, number, 2);
    };
    appendPart('-', month);
    appendPart('-', dayOfYear - daysBeforeMonth(month, isLeapYear(year)) + 1);
    appendPart('T', second / 3600);
    appendPart(':', second / 60 % 60);
    appendPart(':', second % 60);
    text += 'Z';
    return true;
}

}  // namespace platform::property_list
