// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/app_list/rationed_files.h"
#include "platform/ui/device.h"

namespace hosts {

/// What is known of one application.
struct InstalledApplication {
    std::string identifier;  ///< not empty, and without control characters
    std::string displayName;
    std::string folder;  ///< the phone's path of its ".app" folder
    bool isSystem = false;
};

/// Reads the Info.plist of the application in `folder`, whose name ends in ".app", and its English
/// names. Nothing, with one clause in `problem`, when there is no usable identifier; anything else
/// that is missing or malformed is as if it were not there.
std::optional<InstalledApplication> readApplication(RationedFiles& files, const std::string& folder,
                                                    std::string& problem);

/// The names of its icon, as `iconNames` gives them, from its Info.plist; none when that cannot be
/// read. Apart from the rest, since making them for every application is much of the work of listing
/// them, and few icons are looked at.
std::vector<std::string> readIconNames(RationedFiles& files, const std::string& folder,
                                       const platform::UIDevice& device);

}  // namespace hosts
