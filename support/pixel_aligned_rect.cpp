// SPDX-License-Identifier: MIT
#include "support/pixel_aligned_rect.h"

#include <cmath>

namespace trivel3 {

platform::CGRect PixelAlignedRect(const platform::CGRect& rect, const platform::UIScreen& screen) {
    const double pointsPerPixel = 1 / screen.scale;
    // Single precision takes back what decimals such as 0.1 are off by, which would otherwise keep an
    // edge that lies on a half from being rounded as one.
    const auto aligned = [&](double edge) {
        return static_cast<double>(std::round(static_cast<float>(edge * screen.scale))) * pointsPerPixel;
    };
    const double left = aligned(rect.x);
    const double top = aligned(rect.y);
    const double right = aligned(rect.x + rect.width);
    const double bottom = aligned(rect.y + rect.height);
    return {left, top, right - left, bottom - top};
}

}  // namespace trivel3
