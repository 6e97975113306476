// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "hosts/app_list/application_icon.h"
#include "hosts/app_list/fetched_files.h"
#include "hosts/app_list/installed_applications.h"
#include "platform/services/app_list.h"
#include "platform/services/platform.h"

namespace hosts {

/// The app-list service, from the folders of the phone. It runs nothing that it finds there.
///
/// `applications` looks what has been installed and removed; the other two speak of what it found
/// last (and look themselves, when it has not been asked yet), so that they agree with the list that
/// the caller holds. An icon's files are read when the icon is asked for; what all icons together may
/// cost is bounded anew with each look.
class InstalledApplicationList final : public platform::ALApplicationList {
public:
    explicit InstalledApplicationList(platform::Platform& platform) : _platform(platform) {}

    Applications applications() override;
    Applications applicationsFilteredBySystem(bool isSystemApplication) override;
    std::shared_ptr<const platform::UIImage> iconOfSize_forDisplayIdentifier(int size,
                                                                             std::string_view identifier) override;

private:
    void refresh();
    const InstalledApplications& lastFound();
    const platform::FileSystem& files() const;

    platform::Platform& _platform;
    std::optional<InstalledApplications> _lastFound;
    IconRation _iconRation = usualIconRation;
    /// Only where the phone is far.
    std::optional<FetchedFiles> _fetched;
};

}  // namespace hosts
