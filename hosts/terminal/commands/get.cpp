// SPDX-License-Identifier: MIT
#include <unistd.h>

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

using platform::Problem;
using platform::Result;
using platform::Value;

Result<Value> readValue(SettingsCommand& command, const std::string& key) {
    auto value = command.settings().preferenceForKey(key);
    if (const auto read = command.outcome(); !read) return read.error();
    if (value) return *std::move(value);
    if (!command.findSetting(key)) return Problem{.reason = command.unknownKey(key)};
    return Problem{.reason = inQuotes(key) + " is not set and has no default"};
}

Result<std::string> lineOf(const std::string& key, const Value& value) {
    auto text = valueText(value);
    if (!text) return Problem{.reason = inQuotes(key) + " holds what an XML property list cannot say"};
    return text->ends_with('\n') && !value.string() ? *text : *text + "\n";
}

Result<std::string> valuesText(SettingsCommand& command, const std::vector<std::string>& keys) {
    std::string text;
    for (const std::string& key : keys) {
        const auto value = readValue(command, key);
        if (!value) return value.error();
        const auto line = lineOf(key, *value);
        if (!line) return line;
        text += *line;
    }
    return ::isatty(STDOUT_FILENO) == 1 ? printableLines(text) : text;
}

// One value by itself, several by their keys.
Result<std::string> valuesJson(SettingsCommand& command, const std::vector<std::string>& keys) {
    AnswerValues values;
    nlohmann::json all = nlohmann::json::object();
    for (const std::string& key : keys) {
        const auto value = readValue(command, key);
        if (!value) return value.error();
        all[key] = values.jsonOf(*value);
    }
    return jsonLine(keys.size() == 1 ? all.front() : all) + "\n";
}

}  // namespace

int runGet(OpenedPhone& context, const GetOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const auto text = options.json ? valuesJson(*command, options.keys) : valuesText(*command, options.keys);
    if (!text) return fail(failed, text.error());
    command->tellDefaults();
    print(*text);
    return done;
}

}  // namespace hosts::terminal
