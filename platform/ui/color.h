// SPDX-License-Identifier: MIT
#pragma once

namespace platform {

/// Components from 0 to 1, alpha 0 being clear.
struct UIColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    static constexpr UIColor blackColor() { return {0, 0, 0, 1}; }
    static constexpr UIColor whiteColor() { return {1, 1, 1, 1}; }
    static constexpr UIColor grayColor() { return {0.5, 0.5, 0.5, 1}; }

    constexpr UIColor colorWithAlphaComponent(double component) const { return {red, green, blue, component}; }
    bool operator==(const UIColor&) const = default;
};

}  // namespace platform
