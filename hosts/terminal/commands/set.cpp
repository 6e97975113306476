// SPDX-License-Identifier: MIT
#include <charconv>
#include <string_view>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"
#include "platform/foundation/utf8.h"

namespace hosts::terminal {
namespace {

using platform::Result;
using Kind = platform::PreferenceAccess::Kind;

// How a value on the command line is to be read.
enum class ValueType { boolean, integer, string };

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

std::optional<ValueType> valueTypeNamed(const std::string& name) {
    if (name == "bool") return ValueType::boolean;
    if (name == "int") return ValueType::integer;
    if (name == "string") return ValueType::string;
    return std::nullopt;
}

// Nothing when the text is not of that type.
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

// What `parseValue` takes for the type.
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

// The type that a known key's values have; nothing for one that no command line can say.
std::optional<ValueType> typeOf(Kind kind) {
    switch (kind) {
        case Kind::boolean:
            return ValueType::boolean;
        case Kind::integer:
            return ValueType::integer;
        case Kind::dictionary:
            break;
    }
    return std::nullopt;
}

// How the value is to be read, or why there is no way to.
Result<ValueType> chooseType(const SettingsCommand& command, const SetOptions& options) {
    const auto* setting = command.findSetting(options.key);
    if (!setting) {
        if (auto named = valueTypeNamed(options.type)) return *named;
        return platform::Problem{.reason = command.unknownKey(options.key) +
                                           " For a key outside the catalogue, give --type bool, int or string"};
    }
    auto own = typeOf(setting->kind);
    if (!own) {
        return platform::Problem{.reason = inQuotes(options.key) +
                                           " holds a dictionary, which no command line can say; change it on its page"};
    }
    const auto named = valueTypeNamed(options.type);
    // A key without a default is outside the catalogue, and there --type has the say.
    if (named && !setting->defaultValue) return *named;
    if (named && named != own) {
        return platform::Problem{.reason =
                                     inQuotes(options.key) + " takes " + valueTypeHelp(*own) + ": leave --type out"};
    }
    return *own;
}

}  // namespace

int runSet(OpenedPhone& context, const SetOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    if (!platform::isValidUtf8(options.key) || !platform::isValidUtf8(options.value)) {
        return fail(wrongUsage, "key and value must be UTF-8 text; settings hold no other");
    }
    const auto type = chooseType(*command, options);
    if (!type) return fail(wrongUsage, type.error());
    const auto value = parseValue(options.value, *type);
    if (!value) {
        return fail(wrongUsage, inQuotes(options.value) + " is no value for " + inQuotes(options.key) +
                                    ", which takes " + valueTypeHelp(*type));
    }
    const auto written = command->write(options.key, *value);
    return written ? done : fail(failed, written.error());
}

}  // namespace hosts::terminal
