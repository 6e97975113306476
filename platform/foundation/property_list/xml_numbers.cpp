// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
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

}  // namespace platform::property_list
