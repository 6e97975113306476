// SPDX-License-Identifier: MIT
#include <algorithm>
#include <nlohmann/json.hpp>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/kind_name.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {
namespace {

using Kind = platform::PreferenceAccess::Kind;

/// A setting of the catalogue, or one that the file alone has.
struct ListedSetting {
    std::string key;
    std::optional<Kind> kind = {};  ///< nothing for one that the pane does not know
    std::optional<platform::Value> standard = {};
    std::optional<platform::Value> stored = {};

    const std::optional<platform::Value>& value() const { return stored ? stored : standard; }
};

std::vector<ListedSetting> allSettings(SettingsCommand& command) {
    std::vector<ListedSetting> all;
    for (const auto& setting : command.known()) {
        all.push_back(
            {setting.key, setting.kind, setting.defaultValue, command.settings().storedValueForKey(setting.key)});
    }
    const auto content = command.dictionaries().read(command.settings().observedFiles().front().path);
    if (!content) return all;
    for (const auto& [key, value] : *content) {
        if (!command.findSetting(key)) all.push_back({.key = key, .stored = value});
    }
    return all;
}

platform::Result<std::vector<ListedSetting>> settingsNamed(SettingsCommand& command,
                                                           const std::vector<std::string>& keys) {
    std::vector<ListedSetting> all = allSettings(command);
    if (keys.empty()) return all;
    std::vector<ListedSetting> named;
    for (const std::string& key : keys) {
        const auto setting = std::ranges::find(all, key, &ListedSetting::key);
        if (setting == all.end()) return platform::Problem{.reason = command.unknownKey(key)};
        named.push_back(*setting);
    }
    return named;
}

std::string settingsJson(const std::vector<ListedSetting>& settings) {
    AnswerValues values;
    nlohmann::json all = nlohmann::json::array();
    for (const ListedSetting& setting : settings) {
        all.push_back({{"key", setting.key},
                       {"kind", setting.kind ? nlohmann::json(kindName(*setting.kind)) : nlohmann::json()},
                       {"value", values.jsonOf(setting.value())},
                       {"default", values.jsonOf(setting.standard)},
                       {"stored", setting.stored.has_value()}});
    }
    return jsonLine(all) + "\n";
}

std::string padded(std::string text, std::size_t width) {
    const std::size_t used = columns(text);
    return text + std::string(used < width ? width - used : 1, ' ');
}

std::string settingsText(const std::vector<ListedSetting>& settings) {
    constexpr std::size_t valueWidth = 12;
    std::size_t keyWidth = 0;
    for (const ListedSetting& setting : settings)
        keyWidth = std::max(keyWidth, columns(printable(setting.key)));
    std::string text;
    for (const ListedSetting& setting : settings) {
        text += padded(printable(setting.key), keyWidth + 2) + padded(valueSummary(setting.value()), valueWidth) +
                (setting.stored ? "stored" : "default") + (setting.kind ? "\n" : "  (not a setting of the pane)\n");
    }
    return text;
}

}  // namespace

int runList(OpenedPhone& context, const ListOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const auto settings = settingsNamed(*command, options.keys);
    if (const auto read = command->outcome(); !read) return fail(failed, read.error());
    command->tellDefaults();
    if (!settings) return fail(failed, settings.error());
    print(options.json ? settingsJson(*settings) : settingsText(*settings));
    return done;
}

}  // namespace hosts::terminal
