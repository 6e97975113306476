// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hosts/linux/app_list/installed_application.h"
#include "platform/services/file_system.h"
#include "platform/ui/device.h"
#include "platform/ui/image.h"

namespace hosts {

/// The device that an icon is for.
struct IconTarget {
    int points = 0;
    double scale = 1;
    platform::UIDevice device;
};

/// Reads an application's icon: of the files that its names stand for, the one that fits the wanted
/// size best, made smaller where it is larger. The image is named by the application's identifier and
/// measures `points` on each side; it has fewer pixels than the device could show when there is no
/// larger file. Null when no file holds a picture that can be read.
std::shared_ptr<const platform::UIImage> loadIcon(const platform::FileSystem& files,
                                                  const InstalledApplication& application, const IconTarget& target);

}  // namespace hosts
