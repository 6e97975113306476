// SPDX-License-Identifier: MIT
#pragma once

namespace platform {

/// All lengths are in points; a screen's scale says how many device pixels a point has.
struct CGPoint {
    double x = 0;
    double y = 0;
    bool operator==(const CGPoint&) const = default;
};

struct CGSize {
    double width = 0;
    double height = 0;
    bool operator==(const CGSize&) const = default;
};

/// Origin at the top left, y downwards.
struct CGRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    CGSize size() const { return {width, height}; }
    bool operator==(const CGRect&) const = default;
};

}  // namespace platform
