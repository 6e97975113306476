// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>

#include "hosts/session/device_shape.h"

namespace hosts::desktop {

/// Windows are neither smaller nor larger, in points. Narrower, a label and a switch no longer stand side by side.
constexpr QSize smallestWindow{260, 200};
constexpr QSize largestWindow{8192, 8192};

/// The size of the device's own screen.
QSize screenSize(const DeviceShape& device);

/// In which size a window begins: as it was left, empty for never, while that fits into the room that the desktop
/// leaves for windows; or else as wide as the device, and as high as there is room for beside the window's frame, but
/// no higher than a page is easily read.
QSize startingSize(const DeviceShape& device, QSize remembered, QSize room);

}  // namespace hosts::desktop
