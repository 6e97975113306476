// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/value.h"
#include "platform/ui/device.h"

namespace hosts {

/// The names under which an Info.plist gives the application's icon, in the order in which a device
/// looks: "CFBundleIcons", "CFBundleIconFiles" and "CFBundleIconFile", each with its forms for one
/// kind of device. They are reduced to the part that all files of one icon share ("Icon" for
/// "Icon@2x~ipad.png"), each stands once, and at most `mostIconNames` are taken.
///
/// A name that is more than a plain file name (that holds a '/' or "..") is left out.
std::vector<std::string> iconNames(const platform::Dictionary& info, const platform::UIDevice& device);

/// The keys that it looks at, each with its forms for phones, for any device and for tablets.
using IconKeyForms = std::array<std::string_view, 3>;
inline constexpr std::array<IconKeyForms, 3> iconKeys = {{
    {"CFBundleIcons~iphone", "CFBundleIcons", "CFBundleIcons~ipad"},
    {"CFBundleIconFiles~iphone", "CFBundleIconFiles", "CFBundleIconFiles~ipad"},
    {"CFBundleIconFile~iphone", "CFBundleIconFile", "CFBundleIconFile~ipad"},
}};

inline constexpr std::size_t mostIconNames = 16;

/// The files that such a name may stand for: each scale, the wanted one first, with each of the
/// endings for a kind of device.
std::vector<std::string> iconFileNames(std::string_view iconName, double scale, const platform::UIDevice& device);

}  // namespace hosts
