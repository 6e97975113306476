// SPDX-License-Identifier: MIT
#include "hosts/session/settings_session.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "hosts/session/printable.h"
#include "hosts/session/reset.h"
#include "hosts/session/stored_content.h"
#include "hosts/session/undo.h"

namespace hosts {

/// What the user is told of turns that are taken back.
struct TakeBackWords {
    const char* done;
    const char* notDone;
    const char* nothing;
};

namespace {

using platform::Problem;
using platform::Result;

constexpr std::string_view panePath = "/Library/PreferenceBundles/Trivel3Preferences.bundle";
constexpr const char* advice = "; install the program again";

constexpr TakeBackWords undoWords{"Undone: ", "Not undone: ", "there is nothing to undo"};

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

std::size_t settingsIn(const std::vector<HistoryEntry>& changes) {
    std::set<std::string_view> keys;
    for (const HistoryEntry& change : changes)
        keys.insert(change.key);
    return keys.size();
}

std::string resetText(const std::string& label, std::size_t settings) {
    const std::string name = label.empty() ? std::string() : "“" + printable(label) + "”";
    if (settings == 0) return label.empty() ? "All is at its default already." : name + " is at its default already.";
    if (!label.empty()) return "Reset " + name + ".";
    return settings == 1 ? "Reset 1 setting." : "Reset " + std::to_string(settings) + " settings.";
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
      _history(services.history),
      _phone(services.phone) {}

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

const Defaults* SettingsSession::defaults() {
    if (_defaults) return _defaults.get();
    if (auto access = preferenceAccess()) _defaults = std::make_unique<Defaults>(*std::move(access));
    return _defaults.get();
}

void SettingsSession::land() {
    _platform.dictionaries.land();
    _services.releaseNotifications();
    if (_phone) _phone->settle();
}

bool SettingsSession::drawn() {
    land();
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
    return takeBack(turnToUndo, undoWords);
}

Result<std::string> SettingsSession::redo() {
    return takeBack(turnToRedo, {"Done again: ", "Not done again: ", "there is nothing to do again"});
}

Result<std::string> SettingsSession::undoTurn(std::uint64_t turn) {
    return takeBack([turn](const History::Reading& history) { return turnNumbered(history, turn); }, undoWords);
}

bool SettingsSession::hasTurnToUndo() const {
    return hasTurn(turnToUndo);
}

bool SettingsSession::hasTurnToRedo() const {
    return hasTurn(turnToRedo);
}

bool SettingsSession::hasTurn(const ChooseTurn& choose) const {
    const auto history = _history ? _history->history.read() : History::Reading();
    return history && !choose(*history).empty();
}

Result<std::string> SettingsSession::takeBack(const ChooseTurn& choose, const TakeBackWords& words) {
    const auto refused = [&words](const std::string& why) { return Problem{.reason = words.notDone + why}; };
    if (!_history) return refused(words.nothing);
    const auto history = _history->history.read();
    if (!history) return refused(history.error().text());
    const auto changes = choose(*history);
    if (changes.empty()) return refused(words.nothing);
    auto own = ownChanges();
    if (!own) return refused(own.error().text());
    const auto steps = Undo(*std::move(own)).takeBack(changes, Undo::Newer::stays);
    if (!steps) return refused(steps.error().text());
    return words.done + namesOf(*steps);
}

Result<OwnChanges> SettingsSession::ownChanges() {
    if (!_history) return Problem{.reason = "nothing is changed here"};
    const auto access = preferenceAccess();
    if (!access) return access.error();
    return OwnChanges(_platform.files, _platform.notifications, _history->recorder, (*access)->observedFiles());
}

Result<SettingsSession::DoneTurn> SettingsSession::reset(std::span<const std::string> keys, const std::string& label) {
    auto own = ownChanges();
    if (!own) return own.error();
    const auto access = preferenceAccess();
    if (!access) return access.error();
    const auto steps = resetSettings(*std::move(own), **access, keys);
    if (!steps) return Problem{.reason = "Not reset: " + steps.error().text()};
    const std::uint64_t turn = _history->recorder.turn();
    _history->recorder.endTurn();
    return DoneTurn{resetText(label, settingsIn(*steps)), turn};
}

bool SettingsSession::canReset(std::span<const std::string> keys) {
    const auto access = preferenceAccess();
    return access && wouldReset(_platform.files, **access, keys);
}

std::vector<std::string> SettingsSession::observedFiles() {
    std::vector<std::string> paths;
    const auto access = preferenceAccess();
    if (!access) return paths;
    for (auto& file : (*access)->observedFiles())
        paths.push_back(std::move(file.path));
    return paths;
}

std::vector<std::string> SettingsSession::observedNotifications() {
    std::vector<std::string> names;
    const auto access = preferenceAccess();
    if (!access) return names;
    for (auto& file : (*access)->observedFiles())
        names.push_back(std::move(file.notification));
    return names;
}

bool SettingsSession::hasChangedSinceDrawn(std::span<const std::string> paths) {
    // What was read of a far phone serves until a turn ends; who asks this asks about what has happened since.
    if (_platform.files.isFar()) _platform.dictionaries.forget();
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
