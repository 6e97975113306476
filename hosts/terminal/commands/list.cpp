// SPDX-License-Identifier: MIT
#include <algorithm>
#include <nlohmann/json.hpp>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/listed_settings.h"
#include "hosts/terminal/render/kind_name.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/render/value_text.h"
#include "platform/foundation/property_list.h"

namespace hosts::terminal {
namespace {

// As whoever stores it elsewhere can read it; null for what XML cannot say either.
nlohmann::json propertyListOf(const platform::Value& value) {
    const auto writing = platform::writeXmlPropertyList(value);
    return writing ? nlohmann::json(*writing.bytes) : nlohmann::json();
}

std::string settingsJson(const std::vector<ListedSetting>& settings) {
    AnswerValues values;
    nlohmann::json all = nlohmann::json::array();
    for (const ListedSetting& setting : settings) {
        nlohmann::json& object = all.emplace_back(nlohmann::json::object());
        object["key"] = setting.key;
        object["kind"] = setting.kind ? nlohmann::json(kindName(*setting.kind)) : nlohmann::json();
        object["value"] = values.jsonOf(setting.value());
        if (!values.isExact())
            object["plist"] = values.isBySize() ? nlohmann::json() : propertyListOf(*setting.value());
        object["default"] = values.jsonOf(setting.standard);
        object["stored"] = setting.stored.has_value();
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
