// SPDX-License-Identifier: MIT
#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/setting_value.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"
#include "platform/foundation/utf8.h"

namespace hosts::terminal {
namespace {

using platform::Result;
using Kind = platform::PreferenceAccess::Kind;

platform::Problem refusal(std::string reason) {
    return {{}, {}, std::move(reason)};
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
        return refusal(command.unknownKey(options.key) +
                       " For a key outside the catalogue, give --type bool, int or string");
    }
    auto own = typeOf(setting->kind);
    if (!own) {
        return refusal(inQuotes(options.key) +
                       " holds a dictionary, which no command line can say; change it on its page");
    }
    const auto named = valueTypeNamed(options.type);
    // A key without a default is outside the catalogue, and there --type has the say.
    if (named && !setting->defaultValue) return *named;
    if (named && named != own) {
        return refusal(inQuotes(options.key) + " takes " + valueTypeHelp(*own) + ": leave --type out");
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
