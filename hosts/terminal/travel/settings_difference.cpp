// SPDX-License-Identifier: MIT
#include "hosts/terminal/travel/settings_difference.h"

#include <algorithm>
#include <utility>

#include "hosts/phones/key_change.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {
namespace {

using platform::Dictionary;
using Setting = platform::PreferenceAccess::Setting;

const Dictionary& contentOf(const std::optional<Dictionary>& file) {
    static const Dictionary none;
    return file ? *file : none;
}

SettingDifference sidesOf(const Setting& setting, const Dictionary& left, const Dictionary& right) {
    SettingDifference sides{.key = setting.key,
                            .old = left.valueForKey(setting.key),
                            .now = right.valueForKey(setting.key),
                            .isOldStored = left.contains(setting.key),
                            .isNowStored = right.contains(setting.key)};
    if (!sides.old) sides.old = setting.defaultValue;
    if (!sides.now) sides.now = setting.defaultValue;
    return sides;
}

std::vector<SettingDifference> storedDifferences(const Dictionary& left, const Dictionary& right) {
    std::vector<SettingDifference> all;
    for (KeyChange& change : differences(left, right)) {
        const bool wasThere = change.before.has_value();
        const bool isThere = change.after.has_value();
        all.push_back({std::move(change.key), std::move(change.before), std::move(change.after), wasThere, isThere});
    }
    return all;
}

std::string sideText(const std::optional<platform::Value>& value, bool isStored) {
    return valueSummary(value) + (value && !isStored ? " (default)" : "");
}

std::string differenceLine(const SettingDifference& difference) {
    std::string text = printable(difference.key) + ": " + sideText(difference.old, difference.isOldStored) + " -> " +
                       sideText(difference.now, difference.isNowStored) +
                       (difference.isKnown ? "\n" : "  (not a setting of the pane)\n");
    for (const KeyChange& entry : differences(difference.old, difference.now)) {
        text +=
            "  " + printable(entry.key) + ": " + valueSummary(entry.before) + " -> " + valueSummary(entry.after) + "\n";
    }
    return text;
}

void addJson(nlohmann::json& all, AnswerValues& values, const std::vector<SettingDifference>& differences,
             const std::string& file) {
    for (const SettingDifference& each : differences) {
        all.push_back({{"file", file},
                       {"key", each.key},
                       {"old", values.jsonOf(each.old)},
                       {"new", values.jsonOf(each.now)},
                       {"oldStored", each.isOldStored},
                       {"newStored", each.isNowStored}});
    }
}

}  // namespace

SettingsDifference differenceOf(const StoredSettings& left, const StoredSettings& right,
                                std::span<const Setting> known) {
    SettingsDifference difference;
    const Dictionary& old = contentOf(left.settings);
    const Dictionary& now = contentOf(right.settings);
    for (const Setting& setting : known) {
        SettingDifference sides = sidesOf(setting, old, now);
        if (sides.old != sides.now) difference.settings.push_back(std::move(sides));
    }
    for (SettingDifference& each : storedDifferences(old, now)) {
        if (std::ranges::find(known, each.key, &Setting::key) != known.end()) continue;
        each.isKnown = false;
        difference.settings.push_back(std::move(each));
    }
    if (left.tellsExceptions && right.tellsExceptions) {
        difference.exceptions = storedDifferences(contentOf(left.exceptions), contentOf(right.exceptions));
    }
    return difference;
}

std::string differenceText(const SettingsDifference& difference) {
    std::string text;
    for (const SettingDifference& each : difference.settings)
        text += differenceLine(each);
    if (!difference.exceptions.empty()) text += "Exceptions:\n";
    for (const SettingDifference& each : difference.exceptions)
        text += "  " + differenceLine(each);
    return text;
}

nlohmann::json differenceJson(const SettingsDifference& difference,
                              std::span<const platform::PreferenceAccess::ObservedFile> files) {
    AnswerValues values;
    nlohmann::json all = nlohmann::json::array();
    addJson(all, values, difference.settings, files.front().path);
    addJson(all, values, difference.exceptions, files.back().path);
    return all;
}

}  // namespace hosts::terminal
