// SPDX-License-Identifier: MIT
#include <algorithm>
#include <limits>

#include "platform/foundation/ascii.h"
#include "platform/foundation/value.h"

namespace platform {

namespace {

constexpr auto greatest = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();
constexpr double twoToThe63 = 9223372036854775808.0;

struct SignedText {
    bool negative = false;
    std::string_view rest;
};

/// Takes the blanks and the one sign that a number may start with off the text.
SignedText skipBlanksAndSign(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    return {negative, text};
}

std::int64_t leadingInteger(std::string_view text) {
    const auto [negative, digits] = skipBlanksAndSign(text);
    std::int64_t number = 0;
    for (const char character : digits) {
        if (!isDigit(character)) break;
        const int digit = character - '0';
        if (negative) {
            if (number < (least + digit) / 10) return least;
            number = number * 10 - digit;
        } else {
            if (number > (greatest - digit) / 10) return greatest;
            number = number * 10 + digit;
        }
    }
    return number;
}

std::int64_t cutTowardsZero(double number) {
    if (number >= twoToThe63) return greatest;
    if (number <= -twoToThe63) return least;
    return number == number ? static_cast<std::int64_t>(number) : 0;
}

bool startsTrue(std::string_view text) {
    std::string_view rest = skipBlanksAndSign(text).rest;
    rest.remove_prefix(std::min(rest.find_first_not_of('0'), rest.size()));
    return !rest.empty() && std::string_view("YyTt123456789").find(rest.front()) != std::string_view::npos;
}

}  // namespace

std::int64_t integerValue(const Value& value) {
    if (const auto* flag = value.boolean()) return *flag ? 1 : 0;
    if (const auto* number = value.integer()) return static_cast<std::int64_t>(number->bits);
    if (const auto* number = value.real()) return cutTowardsZero(*number);
    if (const auto* text = value.string()) return leadingInteger(*text);
    return 0;
}

std::int64_t integerValue(const std::optional<Value>& value) {
    return value ? integerValue(*value) : 0;
}

bool boolValue(const Value& value) {
    if (const auto* flag = value.boolean()) return *flag;
    if (const auto* number = value.integer()) return number->bits != 0;
    if (const auto* number = value.real()) return *number != 0;
    if (const auto* text = value.string()) return startsTrue(*text);
    return false;
}

bool boolValue(const std::optional<Value>& value) {
    return value && boolValue(*value);
}

}  // namespace platform
