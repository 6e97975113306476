// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/app_list/installed_applications.h"
#include "platform/ui/device.h"
#include "platform/ui/image.h"

namespace hosts {

/// The device that an icon is for.
struct IconTarget {
    int points = 0;
    double scale = 1;
    platform::UIDevice device;
};

/// What all icons together may cost from one look at the applications to the next. A phone may have
/// very many applications, each with an icon that takes long to read.
struct IconRation {
    FileRation files;
    std::uint64_t pixels;  ///< of all pictures that are decoded
};

/// Enough for a hundred thousand applications whose icons are what icons are.
inline constexpr IconRation usualIconRation = {
    .files = {.calls = 2'000'000, .names = 0, .bytes = std::size_t{2} << 30},
    .pixels = std::uint64_t{1} << 29,
};

/// Where icons come from.
struct IconSource {
    const platform::FileSystem& files;
    IconRation& ration;  ///< what is left of it
    platform::FileListener* skips = nullptr;
};

/// Reads an application's icon: of the files that its names stand for, the one that fits the wanted
/// size best, made smaller where it is larger. The image is named by the application's identifier and
/// measures `points` on each side; it has fewer pixels than the device could show when there is no
/// larger file. Null when no file holds a picture that can be read, or the ration has run out.
std::shared_ptr<const platform::UIImage> loadIcon(const IconSource& source, const InstalledApplication& application,
                                                  const IconTarget& target);

/// The names under which the Info.plist of the application in `folder` gives its icon, in the order in
/// which a device looks: "CFBundleIcons", "CFBundleIconFiles" and "CFBundleIconFile", each with its
/// forms for one kind of device. They are reduced to the part that all files of one icon share ("Icon"
/// for "Icon@2x~ipad.png"), each stands once, and no more are taken than an application has. A name
/// that is more than a plain file name (that holds a '/' or "..") is left out.
std::vector<std::string> readIconNames(RationedFiles& files, const std::string& folder,
                                       const platform::UIDevice& device);

/// The files that such a name may stand for: each scale, the wanted one first, with each of the
/// endings for a kind of device.
std::vector<std::string> iconFileNames(std::string_view iconName, double scale, const platform::UIDevice& device);

}  // namespace hosts
