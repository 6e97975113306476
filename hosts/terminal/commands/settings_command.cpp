// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/settings_command.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace hosts::terminal {
namespace {

// Levenshtein's distance: the fewest single characters to insert, remove or replace.
std::size_t editDistance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i] == right[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

}  // namespace

SettingsCommand::SettingsCommand(ProgramContext& context)
    : _context(context),
      _notifications(context.installation.sessionBusModule()),
      _session({context.files, _notifications, _application, _deviceQuery, _composers, _composers},
               context.installation.systemImage, context.device) {}

bool SettingsCommand::load(std::string& error) {
    if (!_session.loadPane(error)) return false;
    _access = _session.preferenceAccess(error);
    if (!_access) return false;
    _known = _access->settings();
    return true;
}

const platform::PreferenceAccess::Setting* SettingsCommand::findSetting(std::string_view key) const {
    auto found = std::ranges::find(_known, key, &platform::PreferenceAccess::Setting::key);
    return found == _known.end() ? nullptr : &*found;
}

std::string SettingsCommand::nearestKey(std::string_view key) const {
    // Case apart first: a key in the wrong case is the commonest slip.
    const std::string wanted = lowerCase(key.substr(0, 256));
    auto nearest = std::ranges::min_element(
        _known, {}, [&wanted](const auto& setting) { return editDistance(wanted, lowerCase(setting.key)); });
    return nearest == _known.end() ? std::string() : nearest->key;
}

bool SettingsCommand::write(std::string_view key, const platform::Value& value, std::string& error) {
    _access->setPreferenceForKey(value, key);
    if (_access->storedValueForKey(key) == value) return true;
    error = _context.files.lastError();
    if (!error.empty()) return false;
    error = _access->observedFiles().front().path +
            ": holds what an XML property list cannot say, so it was left as it is; convert or remove it";
    return false;
}

}  // namespace hosts::terminal
