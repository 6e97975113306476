// SPDX-License-Identifier: MIT
#include "support/pixel_aligned_rect.h"

#include <gtest/gtest.h>

namespace trivel3 {
namespace {

using platform::CGRect;

CGRect aligned(const CGRect& rect, double scale) {
    return PixelAlignedRect(rect, {.scale = scale});
}

TEST(PixelAlignedRect, leavesWholePixelsAsTheyAre) {
    const CGRect whole = {9, 18, 60, 60};
    EXPECT_EQ(aligned(whole, 1), whole);
    EXPECT_EQ(aligned(whole, 2), whole);
    const CGRect halves = {9.5, 18.5, 60.5, 1.5};
    EXPECT_EQ(aligned(halves, 2), halves);
}

TEST(PixelAlignedRect, roundsEachEdgeToTheNearestPixel) {
    EXPECT_EQ(aligned({1.4, 1.6, 10, 10}, 1), (CGRect{1, 2, 10, 10}));
    EXPECT_EQ(aligned({1.2, 1.3, 10, 10}, 2), (CGRect{1, 1.5, 10, 10}));
}

TEST(PixelAlignedRect, roundsHalvesAwayFromZero) {
    EXPECT_EQ(aligned({0.5, 1.5, 2, 2}, 1), (CGRect{1, 2, 2, 2}));
    EXPECT_EQ(aligned({-0.5, -1.5, 0, 0}, 1), (CGRect{-1, -2, 0, 0}));
    EXPECT_EQ(aligned({0.25, -0.25, 0, 0}, 2), (CGRect{0.5, -0.5, 0, 0}));
}

TEST(PixelAlignedRect, roundsEdgesAndNotSizes) {
    // From 0.4 to 1.6: the edges come to lie on 0 and 2, though the size alone would round to 1.
    EXPECT_EQ(aligned({0.4, 0.6, 1.2, 1.2}, 1), (CGRect{0, 1, 2, 1}));
}

TEST(PixelAlignedRect, keepsRectanglesFlushThatTouch) {
    for (const double scale : {1.0, 2.0, 3.0}) {
        for (int step = 0; step < 200; ++step) {
            const double edge = 0.07 * step;
            const CGRect left = aligned({1.3, 0, edge - 1.3, 5}, scale);
            const CGRect right = aligned({edge, 0, 8.9, 5}, scale);
            EXPECT_DOUBLE_EQ(left.x + left.width, right.x) << "edge " << edge << " at scale " << scale;
        }
    }
}

TEST(PixelAlignedRect, givesThirdsOfAPointAtScale3) {
    const CGRect rect = aligned({79, 37.5, 194, 55}, 3);
    EXPECT_DOUBLE_EQ(rect.y, 113 / 3.0);
    EXPECT_DOUBLE_EQ(rect.y + rect.height, 278 / 3.0);
}

// In double precision 1.005 × 100 is just below 100.5; in single precision it is that very half.
TEST(PixelAlignedRect, roundsTheProductInSinglePrecision) {
    ASSERT_LT(1.005 * 100, 100.5);
    EXPECT_DOUBLE_EQ(aligned({1.005, 0, 0, 0}, 100).x, 1.01);
}

}  // namespace
}  // namespace trivel3
