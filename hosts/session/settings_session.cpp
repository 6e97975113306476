// SPDX-License-Identifier: MIT
#include "hosts/session/settings_session.h"

#include <string_view>

namespace hosts {
namespace {

constexpr std::string_view panePath = "/Library/PreferenceBundles/Trivel3Preferences.bundle";

}  // namespace

SettingsSession::SettingsSession(const SessionServices& services, const std::string& systemImage,
                                 const DeviceShape& shape)
    : _system(systemImage, _classes), _platform{services.files, services.notifications, _classes,
                                                _system,        services.application,   services.deviceQuery,
                                                services.mail,  services.posts,         shape.device,
                                                shape.screen,   services.skips} {}

bool SettingsSession::loadPane(std::string& error) {
    _pane = _system.bundleWithPath(panePath);
    if (!_pane) {
        error = _system.folder() + std::string(panePath) + ": no such bundle; install the program again";
        return false;
    }
    const platform::Result<platform::Done> loaded = _pane->load();
    if (!loaded) error = loaded.error().text() + "; install the program again";
    return loaded.has_value();
}

std::shared_ptr<platform::PSViewController> SettingsSession::makeRootPage(std::string& error) {
    const std::string name = _pane->infoString("NSPrincipalClass");
    auto page = _classes.make<platform::PSViewController>(name, _platform);
    if (!page) {
        error = _pane->path() + ": its principal class '" + name + "' is no page";
        return nullptr;
    }
    page->setSpecifier(platform::PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        _pane->infoString("CFBundleDisplayName"), nullptr, nullptr, nullptr, name, platform::PSCellType::link, {}));
    return page;
}

std::shared_ptr<platform::PreferenceAccess> SettingsSession::preferenceAccess(std::string& error) {
    const std::string name = _pane->infoString(platform::PreferenceAccess::infoKey);
    auto access = _classes.make<platform::PreferenceAccess>(name, _platform);
    if (!access) error = _pane->path() + ": offers no settings by name (" + platform::PreferenceAccess::infoKey + ")";
    return access;
}

}  // namespace hosts
