// SPDX-License-Identifier: MIT
#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

#include "hosts/session/exit_status.h"
#include "hosts/session/pane_choices.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/travel/xml_form.h"
#include "platform/foundation/ascii.h"
#include "platform/foundation/utf8.h"

namespace hosts::terminal {
namespace {

using platform::Result;
using Kind = platform::PreferenceAccess::Kind;

// How a value on the command line is to be read.
enum class ValueType { boolean, integer, string };

std::optional<platform::Value> parseBoolean(std::string_view text) {
    for (std::string_view word : {"true", "yes", "on", "1"}) {
        if (platform::equalInAnyCase(text, word)) return platform::Value(true);
    }
    for (std::string_view word : {"false", "no", "off", "0"}) {
        if (platform::equalInAnyCase(text, word)) return platform::Value(false);
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
    if (name == "boolean") return ValueType::boolean;
    if (name == "integer") return ValueType::integer;
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

/// Reads keys and values as they stand on the command line.
class ValueReader {
public:
    ValueReader(OpenedPhone& phone, const SettingsCommand& command, const std::string& type)
        : _phone(phone), _command(command), _type(valueTypeNamed(type)) {}

    Result<platform::Dictionary> read(const std::vector<std::string>& words) {
        platform::Dictionary values;
        for (std::size_t word = 0; word + 1 < words.size(); word += 2) {
            const std::string& key = words[word];
            const std::string& text = words[word + 1];
            if (values.contains(key)) return Problem{.reason = inQuotes(key) + " is there twice"};
            auto value = readOne(key, text);
            if (!value) return std::move(value).error();
            if (const auto unsayable = whatXmlCannotSay(platform::Dictionary{{key, *value}})) {
                return Problem{.reason = inQuotes(key) + " or its value holds " + *unsayable +
                                         ", which no settings file can say"};
            }
            values.set(key, *std::move(value));
        }
        return values;
    }

private:
    using Problem = platform::Problem;

    Result<platform::Value> readOne(const std::string& key, const std::string& text) {
        if (!platform::isValidUtf8(key) || !platform::isValidUtf8(text)) {
            return Problem{.reason = "key and value must be UTF-8 text; settings hold no other"};
        }
        const auto type = typeFor(key);
        if (!type) return type.error();
        auto value = parseValue(text, *type);
        if (*type == ValueType::integer && _command.findSetting(key)) return integerFor(key, text, value);
        if (value) return *std::move(value);
        return Problem{.reason = inQuotes(text) + " is no value for " + inQuotes(key) + ", which takes " +
                                 valueTypeHelp(*type)};
    }

    // How the value is to be read, or why there is no way to.
    Result<ValueType> typeFor(const std::string& key) const {
        const auto* setting = _command.findSetting(key);
        if (!setting) {
            if (_type) return *_type;
            return Problem{.reason = _command.unknownKey(key) +
                                     " For a key outside the catalogue, give --type boolean, integer or string"};
        }
        auto own = typeOf(setting->kind);
        if (!own) {
            return Problem{.reason = inQuotes(key) +
                                     " holds a dictionary, which no command line can say; change it on its page"};
        }
        // A key without a default is outside the catalogue, and there --type has the say.
        if (_type && !setting->defaultValue) return *_type;
        if (_type && _type != own) {
            return Problem{.reason = inQuotes(key) + " takes " + valueTypeHelp(*own) + ": leave --type out"};
        }
        return *own;
    }

    // Numbers win over names.
    Result<platform::Value> integerFor(const std::string& key, const std::string& text,
                                       std::optional<platform::Value> number) {
        if (_choices.empty()) _choices = choicesOfPane(_phone);
        const auto choices = std::ranges::find(_choices, key, &PaneChoices::key);
        const bool hasNames = choices != _choices.end();
        if (number) {
            if (hasNames && !choices->standFor(platform::integerValue(*number))) {
                warn(text + " is no choice of " + inQuotes(key) + ": " + choices->numbers());
            }
            return *std::move(number);
        }
        auto named = hasNames ? choices->numberNamed(text) : std::optional<std::int64_t>();
        if (!named) return std::move(named).error();
        if (*named) return platform::Value(**named);
        return Problem{.reason = inQuotes(text) + " is no value for " + inQuotes(key) + ", which takes " +
                                 (hasNames ? "one of these: " + choices->names() : "a decimal integer")};
    }

    OpenedPhone& _phone;
    const SettingsCommand& _command;
    std::optional<ValueType> _type;
    std::vector<PaneChoices> _choices;
};

}  // namespace

int runSet(OpenedPhone& context, const SetOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    auto values = ValueReader(context, *command, options.type).read(options.words);
    if (!values) return fail(wrongUsage, values.error());
    const auto written = command->write(*std::move(values));
    return written ? done : fail(failed, written.error());
}

}  // namespace hosts::terminal
