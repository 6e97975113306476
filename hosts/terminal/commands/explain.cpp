// SPDX-License-Identifier: MIT
#include <algorithm>
#include <nlohmann/json.hpp>

#include "hosts/session/dependencies.h"
#include "hosts/session/exit_status.h"
#include "hosts/session/title_path.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/listed_settings.h"
#include "hosts/terminal/render/kind_name.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {
namespace {

using Kind = platform::PreferenceAccess::Kind;
using Alternatives = std::vector<SettingValue>;
using Conditions = std::vector<Alternatives>;

/// What there is to tell of a setting's values and of what they depend on.
class SettingExplanations {
public:
    SettingExplanations(OpenedPhone& phone, SettingsCommand& command) : _command(command) {
        const std::string file = command.settings().observedFiles().front().path;
        const auto stored = command.dictionaries().read(file);
        _rows = rowsOfSettings(phone, command.known(), file, stored ? *stored : platform::Dictionary());
    }

    std::vector<SettingRow> rowsOf(const std::string& key) const {
        std::vector<SettingRow> rows;
        std::ranges::copy_if(_rows, std::back_inserter(rows), [&](const SettingRow& row) { return row.key == key; });
        return rows;
    }

    /// What all of the rows depend on.
    static Conditions common(const std::vector<SettingRow>& rows) {
        Conditions conditions = rows.empty() ? Conditions() : rows.front().dependsOn;
        std::erase_if(conditions, [&](const Alternatives& each) {
            return !std::ranges::all_of(rows, [&](const SettingRow& row) { return depends(row, each); });
        });
        return conditions;
    }

    /// What the row depends on beside that.
    static Conditions own(const SettingRow& row, const Conditions& common) {
        Conditions conditions = row.dependsOn;
        std::erase_if(conditions, [&](const Alternatives& each) { return std::ranges::count(common, each) > 0; });
        return conditions;
    }

    /// The settings that depend on this one.
    std::vector<std::string> dependents(const std::string& key) const {
        std::vector<std::string> keys;
        for (const auto& setting : _command.known()) {
            const bool depends = std::ranges::any_of(_rows, [&](const SettingRow& row) {
                return row.key == setting.key && std::ranges::any_of(row.dependsOn, [&](const Alternatives& each) {
                           return std::ranges::count(each, key, &SettingValue::key) > 0;
                       });
            });
            if (depends) keys.push_back(setting.key);
        }
        return keys;
    }

    /// The label of the row that gives the setting this value.
    std::string rowOf(const SettingValue& wanted) const {
        const auto row = std::ranges::find_if(_rows, [&](const SettingRow& each) {
            return each.key == wanted.key && (!each.value || each.value == wanted.value);
        });
        return row == _rows.end() ? std::string() : row->label;
    }

    platform::Value valueOf(const SettingValue& wanted) const {
        const auto* const setting = _command.findSetting(wanted.key);
        return setting && setting->kind == Kind::boolean ? platform::Value(wanted.value != 0)
                                                         : platform::Value(wanted.value);
    }

private:
    static bool depends(const SettingRow& row, const Alternatives& condition) {
        return std::ranges::count(row.dependsOn, condition) > 0;
    }

    SettingsCommand& _command;
    std::vector<SettingRow> _rows;
};

/// A value that a setting can have.
struct AllowedValue {
    platform::Value value;
    std::string name;
    bool holds = false;
    Conditions dependsOn;
};

std::vector<AllowedValue> allowedValues(const ListedSetting& setting, const std::vector<SettingRow>& rows) {
    std::vector<AllowedValue> allowed;
    const auto& current = setting.value();
    if (setting.kind == Kind::boolean) {
        for (const bool value : {true, false})
            allowed.push_back({value, "", current && platform::boolValue(current) == value, {}});
    }
    if (setting.kind != Kind::integer) return allowed;
    const Conditions common = SettingExplanations::common(rows);
    const std::int64_t number = platform::integerValue(current);
    for (const SettingRow& row : rows) {
        const std::int64_t value = row.value.value_or(0);
        const bool holds = row.isFlag && value != 0 ? (number & value) != 0 : number == value;
        allowed.push_back({value, row.label, holds, SettingExplanations::own(row, common)});
    }
    return allowed;
}

bool areFlags(const std::vector<SettingRow>& rows) {
    return std::ranges::any_of(rows, &SettingRow::isFlag);
}

// As `show` takes it; the first page by its name.
std::string pageName(const SettingRow& row) {
    return row.page.empty() ? row.pageTitle : titlePath(row.page);
}

/// Writes explanations down for people.
class ExplanationText {
public:
    ExplanationText(const SettingExplanations& explanations, std::string device)
        : _explanations(explanations),
          _device(std::move(device)),
          _style(styleForStandardOutput()),
          _screen(ScreenText::forPrinting(_style)) {}

    const std::string& text() const { return _text; }

    void add(const ListedSetting& setting) {
        if (!_text.empty()) _text += "\n";
        line(0, setting.key);
        if (!setting.kind) {
            line(2, "Not a setting of the pane");
            line(2, "Value: " + valueSummary(setting.value()) + " (stored)");
            return;
        }
        const std::vector<SettingRow> rows = _explanations.rowsOf(setting.key);
        addPlace(rows);
        line(2, std::string("Kind: ") + kindName(*setting.kind));
        line(2, "Default: " + valueSummary(setting.standard));
        line(2, "Value: " + valueSummary(setting.value()) +
                    (setting.stored     ? " (stored)"
                     : setting.standard ? " (default)"
                                        : ""));
        addValues(setting, rows);
        if (!rows.empty() && rows.front().footer) line(2, "Footer: " + *rows.front().footer);
        addConditions(2, SettingExplanations::common(rows));
        addDependents(setting.key);
    }

private:
    void line(std::size_t indent, const std::string& text) {
        bool isFirst = true;
        for (const std::string& part : _screen.lines(text, _style.width - indent - 2)) {
            _text.append(isFirst ? indent : indent + 2, ' ').append(part).append("\n");
            isFirst = false;
        }
    }

    void addPlace(const std::vector<SettingRow>& rows) {
        if (rows.empty()) {
            line(2, "Page: none, on a device of the shape " + _device);
            return;
        }
        const SettingRow& row = rows.front();
        line(2, "Page: " + pageName(row));
        if (row.header) line(2, "Group: " + *row.header);
        if (!row.value && !row.label.empty()) line(2, "Row: " + row.label);
    }

    void addValues(const ListedSetting& setting, const std::vector<SettingRow>& rows) {
        const std::vector<AllowedValue> allowed = allowedValues(setting, rows);
        if (!allowed.empty()) line(2, areFlags(rows) ? "Values, which can hold together:" : "Values:");
        for (const AllowedValue& each : allowed) {
            const std::string tick = each.holds ? std::string(_screen.glyphs().check) : " ";
            line(4, tick + " " + valueSummary(each.value) + (each.name.empty() ? "" : ": " + each.name));
            addConditions(8, each.dependsOn);
        }
    }

    void addConditions(std::size_t indent, const Conditions& conditions) {
        for (const Alternatives& alternatives : conditions) {
            std::string text;
            for (const SettingValue& each : alternatives) {
                text += (text.empty() ? "" : " or ") + each.key + " = " + valueSummary(_explanations.valueOf(each)) +
                        " (" + _explanations.rowOf(each) + ")";
            }
            line(indent, "Depends on: " + text);
        }
    }

    void addDependents(const std::string& key) {
        std::string text;
        for (const std::string& each : _explanations.dependents(key))
            text += (text.empty() ? "" : ", ") + each;
        if (!text.empty()) line(2, "Depended on by: " + text);
    }

    const SettingExplanations& _explanations;
    std::string _device;
    TextStyle _style;
    ScreenText _screen;
    std::string _text;
};

/// Writes them down for programs.
class ExplanationJson {
public:
    explicit ExplanationJson(const SettingExplanations& explanations) : _explanations(explanations) {}

    nlohmann::json of(const ListedSetting& setting) {
        const std::vector<SettingRow> rows = _explanations.rowsOf(setting.key);
        const SettingRow* const row = rows.empty() ? nullptr : &rows.front();
        nlohmann::json values = nlohmann::json::array();
        for (const AllowedValue& each : allowedValues(setting, rows)) {
            values.push_back({{"value", _values.jsonOf(each.value)},
                              {"name", each.name.empty() ? nlohmann::json() : nlohmann::json(each.name)},
                              {"holds", each.holds},
                              {"dependsOn", conditionsJson(each.dependsOn)}});
        }
        return {{"key", setting.key},
                {"kind", setting.kind ? nlohmann::json(kindName(*setting.kind)) : nlohmann::json()},
                {"default", _values.jsonOf(setting.standard)},
                {"value", _values.jsonOf(setting.value())},
                {"stored", setting.stored.has_value()},
                {"page", row ? nlohmann::json(titlePath(row->page)) : nlohmann::json()},
                {"group", row ? orNull(row->header) : nlohmann::json()},
                {"footer", row ? orNull(row->footer) : nlohmann::json()},
                {"row", row && !row->value && !row->label.empty() ? nlohmann::json(row->label) : nlohmann::json()},
                {"values", std::move(values)},
                {"flags", areFlags(rows)},
                {"dependsOn", conditionsJson(SettingExplanations::common(rows))},
                {"dependedOnBy", _explanations.dependents(setting.key)}};
    }

private:
    nlohmann::json conditionsJson(const Conditions& conditions) {
        nlohmann::json all = nlohmann::json::array();
        for (const Alternatives& alternatives : conditions) {
            nlohmann::json& told = all.emplace_back(nlohmann::json::array());
            for (const SettingValue& each : alternatives) {
                told.push_back({{"key", each.key},
                                {"value", _values.jsonOf(_explanations.valueOf(each))},
                                {"row", _explanations.rowOf(each)}});
            }
        }
        return all;
    }

    const SettingExplanations& _explanations;
    AnswerValues _values;
};

std::string explanationsJson(const SettingExplanations& explanations, const std::vector<ListedSetting>& settings) {
    ExplanationJson json(explanations);
    nlohmann::json all = nlohmann::json::array();
    for (const ListedSetting& setting : settings)
        all.push_back(json.of(setting));
    return jsonLine(all) + "\n";
}

}  // namespace

int runExplain(OpenedPhone& context, const ExplainOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const auto settings = settingsNamed(*command, options.keys);
    if (const auto read = command->outcome(); !read) return fail(failed, read.error());
    command->tellDefaults();
    if (!settings) return fail(failed, settings.error());
    const SettingExplanations explanations(context, *command);
    if (options.json) {
        print(explanationsJson(explanations, *settings));
        return done;
    }
    ExplanationText text(explanations, std::string(context.shape.name));
    for (const ListedSetting& setting : *settings)
        text.add(setting);
    print(text.text());
    return done;
}

}  // namespace hosts::terminal
