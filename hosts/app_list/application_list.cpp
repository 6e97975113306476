// SPDX-License-Identifier: MIT
#include "hosts/app_list/application_list.h"

#include <utility>

namespace hosts {

void InstalledApplicationList::refresh() {
    InstalledApplications known = std::exchange(_lastFound, std::nullopt).value_or(InstalledApplications());
    _fetched.reset();
    if (_platform.files.isFar()) _fetched.emplace(_platform.files);
    _lastFound = findInstalledApplications(files(), std::move(known), _platform.listener);
    _iconRation = usualIconRation;
}

const platform::FileSystem& InstalledApplicationList::files() const {
    if (_fetched) return *_fetched;
    return _platform.files;
}

const InstalledApplications& InstalledApplicationList::lastFound() {
    if (!_lastFound) refresh();
    return *_lastFound;
}

platform::ALApplicationList::Applications InstalledApplicationList::applications() {
    refresh();
    Applications all;
    for (const InstalledApplication& application : lastFound()) {
        all.emplace_hint(all.end(), application.identifier, application.displayName);
    }
    return all;
}

platform::ALApplicationList::Applications InstalledApplicationList::applicationsFilteredBySystem(
    bool isSystemApplication) {
    Applications some;
    for (const InstalledApplication& application : lastFound()) {
        if (application.isSystem != isSystemApplication) continue;
        some.emplace_hint(some.end(), application.identifier, application.displayName);
    }
    return some;
}

std::shared_ptr<const platform::UIImage> InstalledApplicationList::iconOfSize_forDisplayIdentifier(
    int size, std::string_view identifier) {
    const InstalledApplication* application = findApplication(lastFound(), identifier);
    if (!application) return nullptr;
    const IconTarget target{size, _platform.screen.scale, _platform.device};
    if (_fetched) _fetched->fetchIconsFrom(lastFound(), *application, target);
    return loadIcon({files(), _iconRation, _platform.listener}, *application, target);
}

}  // namespace hosts
