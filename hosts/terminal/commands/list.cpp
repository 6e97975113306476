// SPDX-License-Identifier: MIT
#include <nlohmann/json.hpp>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {
namespace {

using Setting = platform::PreferenceAccess::Setting;
using Kind = platform::PreferenceAccess::Kind;

const char* kindName(Kind kind) {
    switch (kind) {
        case Kind::boolean:
            return "boolean";
        case Kind::integer:
            return "integer";
        case Kind::dictionary:
            break;
    }
    return "dictionary";
}

nlohmann::json settingJson(const Setting& setting, const platform::PreferenceAccess& settings, AnswerValues& values) {
    return {{"key", setting.key},
            {"kind", kindName(setting.kind)},
            {"value", values.jsonOf(settings.preferenceForKey(setting.key))},
            {"default", values.jsonOf(setting.defaultValue)},
            {"stored", settings.storedValueForKey(setting.key).has_value()}};
}

std::string settingLine(const Setting& setting, const platform::PreferenceAccess& settings, std::size_t keyWidth) {
    const bool stored = settings.storedValueForKey(setting.key).has_value();
    const std::string value = valueSummary(settings.preferenceForKey(setting.key));
    constexpr std::size_t valueWidth = 12;
    std::string line = setting.key + std::string(keyWidth - setting.key.size() + 2, ' ') + value;
    const std::size_t used = columns(value);
    line += std::string(used < valueWidth ? valueWidth - used : 1, ' ');
    return line + (stored ? "stored" : "default") + "\n";
}

std::string settingsJson(const SettingsCommand& command) {
    AnswerValues values;
    nlohmann::json all = nlohmann::json::array();
    for (const Setting& setting : command.known())
        all.push_back(settingJson(setting, command.settings(), values));
    return jsonLine(all) + "\n";
}

std::string settingsText(const SettingsCommand& command) {
    std::size_t keyWidth = 0;
    for (const Setting& setting : command.known())
        keyWidth = std::max(keyWidth, setting.key.size());
    std::string text;
    for (const Setting& setting : command.known())
        text += settingLine(setting, command.settings(), keyWidth);
    return text;
}

}  // namespace

int runList(OpenedPhone& context, const ListOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const std::string text = options.json ? settingsJson(*command) : settingsText(*command);
    if (const auto read = command->outcome(); !read) return fail(failed, read.error());
    print(text);
    return done;
}

}  // namespace hosts::terminal
