// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "platform/services/platform.h"
#include "platform/ui/image.h"

namespace trivel3 {

/// `imageNamed:inBundle:` for the pane's own bundle: an image of that name, made for the
/// screen's scale; null when it is missing. The bundle is opened from its path at each call.
std::shared_ptr<const platform::UIImage> bundleImage(platform::Platform& platform, std::string_view name);

}  // namespace trivel3
