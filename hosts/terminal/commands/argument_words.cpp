// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/argument_words.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "hosts/session/page_tour.h"
#include "hosts/session/pane_choices.h"
#include "hosts/session/title_path.h"
#include "hosts/terminal/commands/history_text.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {
namespace {

using Kind = platform::PreferenceAccess::Kind;

// Shells hand on what has been typed of the command line, without replacing this.
std::string withHome(const std::string& path) {
    const char* home = std::getenv("HOME");
    return home && path.starts_with("~/") ? home + path.substr(1) : path;
}

PhoneOptions optionsFor(const GivenValues& given) {
    PhoneOptions options;
    if (const char* phone = std::getenv("TRIVEL3_PHONE")) options.phone = phone;
    if (const auto named = given.find("--phone"); named != given.end()) options.phone = withHome(named->second);
    if (const auto named = given.find("--device"); named != given.end()) {
        if (const DeviceShape* shape = findDeviceShape(named->second)) options.device = shape;
    }
    return options;
}

std::vector<Candidate> pagePaths(OpenedPhone& phone) {
    std::vector<Candidate> paths;
    seeEveryPage(phone, [&](const std::vector<std::string>& titles, platform::UIViewController&) {
        if (!titles.empty()) paths.push_back({titlePath(titles)});
    });
    return paths;
}

std::vector<Candidate> choicesOfKey(OpenedPhone& phone, const std::string& key) {
    std::vector<Candidate> values;
    for (const PaneChoices& choices : choicesShown(phone, phone.phone->files())) {
        if (choices.key != key) continue;
        for (const PaneChoices::Row& row : choices.rows)
            values.push_back({std::to_string(row.value), row.label});
    }
    return values;
}

std::vector<Candidate> valueWords(OpenedPhone& phone, const GivenValues& given) {
    const auto command = SettingsCommand::open(phone);
    const auto key = given.find("KEY");
    if (!command || key == given.end()) return {};
    const auto type = given.find("--type");
    const auto* setting = command->findSetting(key->second);
    const bool isBoolean =
        setting ? setting->kind == Kind::boolean : type != given.end() && type->second.starts_with("bool");
    if (isBoolean) return {{"true"}, {"false"}};
    return setting && setting->kind == Kind::integer ? choicesOfKey(phone, key->second) : std::vector<Candidate>();
}

// Those of the catalogue and, since they can be read and written too, those that only the file holds.
std::vector<Candidate> keyWords(OpenedPhone& phone) {
    auto command = SettingsCommand::open(phone);
    if (!command) return {};
    std::vector<Candidate> names;
    for (const auto& setting : command->known())
        names.push_back({setting.key, valueSummary(command->settings().preferenceForKey(setting.key))});
    const auto file = command->dictionaries().read(command->settings().observedFiles().front().path);
    if (!file) return names;
    for (const auto& entry : *file)
        if (!command->findSetting(entry.key)) names.push_back({entry.key, valueSummary(entry.value)});
    return names;
}

std::vector<Candidate> changeNumbers(OpenedPhone& phone, bool (*isWanted)(const HistoryEntry&)) {
    const auto history = phone.history->history.read();
    if (!history) return {};
    std::vector<Candidate> numbers;
    for (const HistoryEntry& entry : history->entries)
        if (isWanted(entry)) numbers.push_back({std::to_string(entry.change), changeSummary(entry)});
    std::ranges::reverse(numbers);
    return numbers;
}

}  // namespace

std::vector<Candidate> wordsOfArgument(const std::string& argument, const GivenValues& given) {
    auto phone = OpenedPhone::openToLook(optionsFor(given));
    if (!phone) return {};
    if (argument == "PAGE") return pagePaths(*phone);
    if (argument == "KEY") return keyWords(*phone);
    if (argument == "VALUE") return valueWords(*phone, given);
    if (argument == "CHANGE") return changeNumbers(*phone, [](const HistoryEntry& entry) { return !entry.isUndone; });
    if (argument == "--bytes")
        return changeNumbers(*phone, [](const HistoryEntry& entry) { return entry.kept.has_value(); });
    return {};
}

}  // namespace hosts::terminal
