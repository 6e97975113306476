// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/setting_value.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/exit_status.h"
#include "hosts/terminal/render/printable.h"
#include "platform/foundation/utf8.h"

namespace hosts::terminal {
namespace {

using Kind = platform::PreferenceAccess::Kind;

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
std::optional<ValueType> chooseType(const SettingsCommand& command, const SetOptions& options, std::string& error) {
    const auto* setting = command.findSetting(options.key);
    if (!setting) {
        if (auto named = valueTypeNamed(options.type)) return named;
        error = command.unknownKey(options.key) + " For a key outside the catalogue, give --type bool, int or string";
        return std::nullopt;
    }
    auto own = typeOf(setting->kind);
    if (!own) {
        error = inQuotes(options.key) + " holds a dictionary, which no command line can say; change it on its page";
        return std::nullopt;
    }
    const auto named = valueTypeNamed(options.type);
    // A key without a default is outside the catalogue, and there --type has the say.
    if (named && !setting->defaultValue) return named;
    if (named && named != own) {
        error = inQuotes(options.key) + " takes " + valueTypeHelp(*own) + ": leave --type out";
        return std::nullopt;
    }
    return own;
}

}  // namespace

int runSet(ProgramContext& context, const SetOptions& options) {
    SettingsCommand command(context);
    std::string error;
    if (!command.load(error)) return fail(failed, error);
    if (!platform::isValidUtf8(options.key) || !platform::isValidUtf8(options.value)) {
        return fail(wrongUsage, "key and value must be UTF-8 text; settings hold no other");
    }
    const auto type = chooseType(command, options, error);
    if (!type) return fail(wrongUsage, error);
    const auto value = parseValue(options.value, *type);
    if (!value) {
        return fail(wrongUsage, inQuotes(options.value) + " is no value for " + inQuotes(options.key) +
                                    ", which takes " + valueTypeHelp(*type));
    }
    if (!command.write(options.key, *value, error)) return fail(failed, error);
    return done;
}

}  // namespace hosts::terminal
