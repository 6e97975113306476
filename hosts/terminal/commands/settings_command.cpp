// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/settings_command.h"

#include <algorithm>
#include <vector>

#include "hosts/session/nearest_spelling.h"
#include "hosts/terminal/render/printable.h"
#include "platform/foundation/property_list.h"

namespace hosts::terminal {

SettingsCommand::SettingsCommand(ProgramContext& context)
    : _context(context),
      _files(context.files),
      _notifications(context.installation.sessionBusModule()),
      _session({_files, _notifications, _application, _deviceQuery, _composers, _composers, context.skips.get()},
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
    std::vector<std::string> keys;
    for (const auto& setting : _known)
        keys.push_back(setting.key);
    return nearestSpelling(key, keys);
}

std::string SettingsCommand::unknownKey(std::string_view key) const {
    return inQuotes(key) + " is no known key; did you mean '" + nearestKey(key) + "'?";
}

// The store does not touch a file whose content it could not write back.
std::string SettingsCommand::whyNotTried() const {
    const std::string path = _access->observedFiles().front().path;
    std::string bytes;
    std::string what;
    if (_context.files.readFile(path, bytes)) {
        if (auto content = platform::readPropertyList(bytes))
            what = platform::writeXmlPropertyList(*content.value).reason;
    }
    if (what.empty()) what = "what cannot be said in XML";
    return path + " holds " + what +
           ", which settings are not written with, so it was left as it is; move the file away to start anew";
}

bool SettingsCommand::write(std::string_view key, const platform::Value& value, std::string& error) {
    _files.forget();
    _access->setPreferenceForKey(value, key);
    switch (_files.outcome()) {
        case WatchedWrites::Outcome::worked:
            return true;
        case WatchedWrites::Outcome::failed:
            error = _context.files.lastError();
            return false;
        case WatchedWrites::Outcome::notTried:
            break;
    }
    error = whyNotTried();
    return false;
}

}  // namespace hosts::terminal
