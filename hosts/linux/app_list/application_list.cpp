// SPDX-License-Identifier: MIT
#include "hosts/linux/app_list/application_list.h"

#include <utility>

#include "hosts/linux/app_list/icon_loader.h"

namespace hosts {

void InstalledApplicationList::refresh() {
    InstalledApplications known = std::exchange(_lastFound, std::nullopt).value_or(InstalledApplications());
    _lastFound = findInstalledApplications(_platform.files, _platform.device, std::move(known));
}

const InstalledApplications& InstalledApplicationList::lastFound() {
    if (!_lastFound) refresh();
    return *_lastFound;
}

platform::ALApplicationList::Applications InstalledApplicationList::applications() {
    refresh();
    Applications all;
    for (const auto& [identifier, application] : lastFound()) {
        all.emplace_hint(all.end(), identifier, application.displayName);
    }
    return all;
}

platform::ALApplicationList::Applications InstalledApplicationList::applicationsFilteredBySystem(
    bool isSystemApplication) {
    Applications some;
    for (const auto& [identifier, application] : lastFound()) {
        if (application.isSystem != isSystemApplication) continue;
        some.emplace_hint(some.end(), identifier, application.displayName);
    }
    return some;
}

std::shared_ptr<const platform::UIImage> InstalledApplicationList::iconOfSize_forDisplayIdentifier(
    int size, std::string_view identifier) {
    const auto found = lastFound().find(identifier);
    if (found == lastFound().end()) return nullptr;
    return loadIcon(_platform.files, found->second, {size, _platform.screen.scale, _platform.device});
}

}  // namespace hosts
