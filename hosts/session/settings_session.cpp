// SPDX-License-Identifier: MIT
#include "hosts/session/settings_session.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "hosts/session/printable.h"
#include "hosts/session/stored_content.h"
#include "hosts/session/undo.h"

namespace hosts {
namespace {

using platform::Problem;
using platform::Result;

constexpr std::string_view panePath = "/Library/PreferenceBundles/Trivel3Preferences.bundle";
constexpr const char* advice = "; install the program again";

// Each once.
std::string namesOf(const std::vector<HistoryEntry>& changes) {
    std::vector<std::string> names;
    for (const HistoryEntry& change : changes) {
        if (std::ranges::find(names, change.name()) == names.end()) names.push_back(change.name());
    }
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + printable(name);
    return text;
}

}  // namespace

Result<std::unique_ptr<SettingsSession>> SettingsSession::load(const SessionServices& services,
                                                               const std::string& systemImage,
                                                               const DeviceShape& shape) {
    std::unique_ptr<SettingsSession> session(new SettingsSession(services, systemImage, shape));
    const auto pane = session->_system.bundleWithPath(panePath);
    if (!pane) return Problem{systemImage + std::string(panePath), {}, std::string("no such bundle") + advice};
    if (const auto loaded = pane->load(); !loaded) return Problem{.reason = loaded.error().text() + advice};
    session->_pane = std::make_unique<platform::NSBundle>(*pane);
    return session;
}

SettingsSession::SettingsSession(const SessionServices& services, const std::string& systemImage,
                                 const DeviceShape& shape)
    : _services(services),
      _system(systemImage, _classes),
      _platform{_services.files(),
                _services.notifications(),
                _classes,
                _system,
                services.application,
                services.device,
                _composers,
                _composers,
                shape.device,
                shape.screen,
                &_services.listener()},
      _history(services.history) {}

Result<std::shared_ptr<platform::PSViewController>> SettingsSession::makeRootPage() {
    const std::string name = _pane->infoString("NSPrincipalClass");
    auto page = _classes.make<platform::PSViewController>(name, _platform);
    if (!page) return Problem{_pane->path(), {}, "its principal class '" + name + "' is no page"};
    page->setSpecifier(platform::PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        _pane->infoString("CFBundleDisplayName"), nullptr, nullptr, nullptr, name, platform::PSCellType::link, {}));
    return page;
}

Result<std::shared_ptr<platform::PreferenceAccess>> SettingsSession::preferenceAccess() {
    const std::string name = _pane->infoString(platform::PreferenceAccess::infoKey);
    auto access = _classes.make<platform::PreferenceAccess>(name, _platform);
    if (access) return access;
    return Problem{
        _pane->path(), {}, std::string("offers no settings by name (") + platform::PreferenceAccess::infoKey + ")"};
}

bool SettingsSession::drawn() {
    auto contents = _platform.dictionaries.forget();
    for (auto& [path, content] : contents)
        _drawn.insert_or_assign(path, std::move(content));
    if (_history) _history->recorder.endTurn();
    return !contents.empty();
}

// What has been read of the layer is no content of the files.
void SettingsSession::bringUpToDate(platform::UIViewController& page) {
    drawn();
    {
        const PageServices::Layer dropped(_services);
        page.viewWillAppear(false);
    }
    _platform.dictionaries.forget();
}

Result<std::string> SettingsSession::undo() {
    return takeBack(turnToUndo, "Undone: ", "there is nothing to undo");
}

Result<std::string> SettingsSession::redo() {
    return takeBack(turnToRedo, "Done again: ", "there is nothing to do again");
}

Result<std::string> SettingsSession::takeBack(ChooseTurn choose, const char* told, const char* nothing) {
    if (!_history) return Problem{.reason = nothing};
    const auto history = _history->history.read();
    if (!history) return history.error();
    const auto changes = choose(*history);
    if (changes.empty()) return Problem{.reason = nothing};
    const auto access = preferenceAccess();
    if (!access) return access.error();
    Undo undo(_platform.files, _platform.notifications, _history->recorder, (*access)->observedFiles());
    const auto steps = undo.takeBack(changes, Undo::Newer::stays);
    if (!steps) return steps.error();
    return told + namesOf(*steps);
}

std::vector<std::string> SettingsSession::observedFiles() {
    std::vector<std::string> paths;
    const auto access = preferenceAccess();
    if (!access) return paths;
    for (auto& file : (*access)->observedFiles())
        paths.push_back(std::move(file.path));
    return paths;
}

bool SettingsSession::hasChangedSinceDrawn(std::span<const std::string> paths) {
    return std::ranges::any_of(paths, [this](const std::string& path) { return isOtherThanDrawn(path); });
}

bool SettingsSession::isOtherThanDrawn(const std::string& path) {
    const auto drawn = _drawn.find(path);
    if (drawn == _drawn.end()) return false;
    const auto now = _platform.dictionaries.read(path);
    const auto& before = drawn->second;
    return now && before ? !(platform::Value(now) == platform::Value(before)) : now != before;
}

std::optional<Problem> SettingsSession::whyDefaults(std::span<const std::string> paths) {
    for (const std::string& path : paths) {
        const auto drawn = _drawn.find(path);
        if (drawn == _drawn.end() || drawn->second) continue;
        if (auto why = whyNothing(_platform.files, path)) return why;
    }
    return std::nullopt;
}

}  // namespace hosts
