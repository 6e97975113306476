// SPDX-License-Identifier: MIT
#include "hosts/terminal/travel/stored_settings.h"

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

#include "hosts/phones/fault_place.h"
#include "hosts/session/printable.h"
#include "hosts/session/support_report.h"
#include "platform/foundation/ascii.h"
#include "platform/foundation/property_list.h"

namespace hosts::terminal {
namespace {

using nlohmann::json;
using platform::Dictionary;
using platform::Problem;
using platform::Result;
using platform::Value;

constexpr std::string_view versionKey = "FormatVersion";
constexpr std::string_view settingsKey = "Settings";
constexpr std::string_view exceptionsKey = "Exceptions";
constexpr int exportVersion = 1;

// What `list --json` prints nests no deeper, and a settings file is read no deeper either.
constexpr std::size_t greatestDepth = platform::property_list::greatestDepth;

bool isExport(const Dictionary& root) {
    const auto isOfExports = [](const Dictionary::Entry& entry) {
        return entry.key == versionKey ? entry.value.integer() != nullptr
                                       : entry.key == settingsKey || entry.key == exceptionsKey;
    };
    return root.contains(versionKey) && std::ranges::all_of(root, isOfExports);
}

Result<std::optional<Dictionary>> dictionaryUnder(const Dictionary& root, std::string_view key) {
    const Value* const value = root.find(key);
    if (!value || value->isNull()) return std::optional<Dictionary>();
    if (value->dictionary()) return std::optional(*value->dictionary());
    return Problem{.reason = std::string(key) + " is no dictionary"};
}

Result<StoredSettings> fromExport(const Dictionary& root) {
    if (integerValue(root.valueForKey(versionKey)) != exportVersion) {
        return Problem{.reason = "it is an export of another version of the program"};
    }
    auto settings = dictionaryUnder(root, settingsKey);
    if (!settings) return std::move(settings).error();
    auto exceptions = dictionaryUnder(root, exceptionsKey);
    if (!exceptions) return std::move(exceptions).error();
    return StoredSettings{*std::move(settings), *std::move(exceptions)};
}

Result<StoredSettings> fromPropertyList(std::string_view bytes) {
    const auto reading = platform::readPropertyList(bytes);
    if (!reading) return Problem{.reason = faultPlace(reading.error) + ": " + reading.error.reason};
    const Dictionary* const root = reading.value->dictionary();
    if (!root) return Problem{.reason = "its root is no dictionary"};
    if (isExport(*root)) return fromExport(*root);
    if (const auto report = supportReportIn(*root)) {
        return StoredSettings{.settings = report->settings, .tellsExceptions = false};
    }
    return StoredSettings{.settings = *root, .tellsExceptions = false};
}

Value valueOf(const json& told) {
    if (told.is_boolean()) return told.get<bool>();
    if (told.is_number_unsigned()) return told.get<std::uint64_t>();
    if (told.is_number_integer()) return told.get<std::int64_t>();
    if (told.is_number_float()) return told.get<double>();
    if (told.is_string()) return told.get<std::string>();
    if (told.is_array()) {
        platform::Array array;
        for (const json& each : told)
            array.push_back(valueOf(each));
        return array;
    }
    std::vector<Dictionary::Entry> entries;
    for (const auto& [key, value] : told.items())
        entries.push_back({key, valueOf(value)});
    return told.is_object() ? Value(Dictionary(std::move(entries), Dictionary::Duplicates::lastWins)) : Value();
}

bool isListedSetting(const json& entry) {
    return entry.is_object() && entry.contains("key") && entry["key"].is_string() && entry.contains("value") &&
           entry.contains("stored") && entry["stored"].is_boolean();
}

// Of what JSON cannot say, the entry has a property list.
Result<Value> listedValue(const json& entry) {
    if (!entry.contains("plist")) return valueOf(entry["value"]);
    const auto reading = entry["plist"].is_string() ? platform::readPropertyList(entry["plist"].get<std::string>())
                                                    : platform::PropertyListReading();
    if (reading) return *reading.value;
    return Problem{.reason = inQuotes(entry["key"].get<std::string>()) + " holds what a list cannot say"};
}

Result<StoredSettings> fromList(std::string_view bytes) {
    bool isTooDeep = false;
    const auto check = [&isTooDeep](int depth, json::parse_event_t, json&) {
        isTooDeep = isTooDeep || depth > static_cast<int>(greatestDepth);
        return !isTooDeep;
    };
    const json list = json::parse(bytes, check, false);
    const Problem problem{.reason = "it is neither a property list nor what 'trivel3ctl list --json' prints"};
    if (isTooDeep || !list.is_array()) return problem;
    Dictionary settings;
    for (const json& entry : list) {
        if (!isListedSetting(entry)) return problem;
        if (!entry["stored"].get<bool>()) continue;
        auto value = listedValue(entry);
        if (!value) return std::move(value).error();
        settings.set(entry["key"].get<std::string>(), *std::move(value));
    }
    return StoredSettings{.settings = std::move(settings), .tellsExceptions = false};
}

}  // namespace

Result<StoredSettings> readStoredSettings(std::string_view bytes) {
    const auto first = std::ranges::find_if_not(bytes, platform::isBlank);
    return first != bytes.end() && *first == '[' ? fromList(bytes) : fromPropertyList(bytes);
}

Result<std::string> exportOf(const StoredSettings& stored) {
    Dictionary root{{std::string(versionKey), exportVersion}};
    if (stored.settings) root.set(settingsKey, *stored.settings);
    if (stored.exceptions) root.set(exceptionsKey, *stored.exceptions);
    auto writing = platform::writeXmlPropertyList(std::move(root));
    if (!writing) return Problem{.reason = "the settings hold " + writing.reason + ", which no export can say"};
    return *std::move(writing.bytes);
}

}  // namespace hosts::terminal
