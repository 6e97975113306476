// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "platform/ui/geometry.h"

namespace platform {

/// What a page may ask about the device (`UIDevice`, `currentDevice`).
struct UIDevice {
    static constexpr int idiomPhone = 0;
    static constexpr int idiomPad = 1;

    /// Nothing on a system too old to answer.
    std::optional<int> userInterfaceIdiom = idiomPhone;
};

/// The screen (`UIScreen`, `mainScreen`): its size in points and its pixels per point.
struct UIScreen {
    CGRect bounds = {0, 0, 320, 568};
    double scale = 2;
};

}  // namespace platform
