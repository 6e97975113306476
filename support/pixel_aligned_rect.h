// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/device.h"
#include "platform/ui/geometry.h"

namespace trivel3 {

/// The rectangle, in points, with each of its edges moved to the nearest device pixel of the screen,
/// halves away from zero. Edges are rounded and not sizes, so rectangles that touch still do. The
/// platform's headers write such functions of geometry with a capital letter (`CGRectMake`).
platform::CGRect PixelAlignedRect(const platform::CGRect& rect, const platform::UIScreen& screen);

}  // namespace trivel3
