// SPDX-License-Identifier: MIT
#include "resources/bundle_image.h"

namespace trivel3 {
namespace {

constexpr std::string_view bundlePath = "/Library/PreferenceBundles/Trivel3Preferences.bundle";

}  // namespace

std::shared_ptr<const platform::UIImage> bundleImage(platform::Platform& platform, std::string_view name) {
    auto bundle = platform.system.bundleWithPath(bundlePath);
    return bundle ? platform::UIImage::imageNamed_inBundle(name, *bundle, platform.screen.scale) : nullptr;
}

}  // namespace trivel3
