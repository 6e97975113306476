// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/setting_value.h"

#include <charconv>
#include <string_view>

namespace hosts::terminal {
namespace {

std::optional<platform::Value> parseBoolean(std::string_view text) {
    for (std::string_view word : {"true", "yes", "on", "1"}) {
        if (text == word) return platform::Value(true);
    }
    for (std::string_view word : {"false", "no", "off", "0"}) {
        if (text == word) return platform::Value(false);
    }
    return std::nullopt;
}

std::optional<platform::Value> parseInteger(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return platform::Value(number);
}

}  // namespace

std::optional<ValueType> valueTypeNamed(const std::string& name) {
    if (name == "bool") return ValueType::boolean;
    if (name == "int") return ValueType::integer;
    if (name == "string") return ValueType::string;
    return std::nullopt;
}

std::optional<platform::Value> parseValue(const std::string& text, ValueType type) {
    switch (type) {
        case ValueType::boolean:
            return parseBoolean(text);
        case ValueType::integer:
            return parseInteger(text);
        case ValueType::string:
            break;
    }
    return platform::Value(text);
}

const char* valueTypeHelp(ValueType type) {
    switch (type) {
        case ValueType::boolean:
            return "true, false, yes, no, on, off, 1 or 0";
        case ValueType::integer:
            return "a decimal integer";
        case ValueType::string:
            break;
    }
    return "text";
}

}  // namespace hosts::terminal
