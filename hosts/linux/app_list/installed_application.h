// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/linux/app_list/rationed_files.h"
#include "platform/ui/device.h"

namespace hosts {

/// What is known of one application.
struct InstalledApplication {
    std::string identifier;  ///< not empty, and without control characters
    std::string displayName;
    std::string folder;  ///< the phone's path of its ".app" folder
    std::vector<std::string> iconNames;
    bool isSystem = false;
};

/// Reads the Info.plist of the application in `folder`, whose name ends in ".app", and its English
/// names. Nothing, with one clause in `problem`, when there is no usable identifier; anything else
/// that is missing or malformed is as if it were not there.
std::optional<InstalledApplication> readApplication(RationedFiles& files, const std::string& folder,
                                                    const platform::UIDevice& device, std::string& problem);

}  // namespace hosts
