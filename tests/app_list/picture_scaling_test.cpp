// SPDX-License-Identifier: MIT
#include "hosts/app_list/picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "tests/kit/png_maker.h"

namespace app_list_test {

using namespace kit;

namespace {

using hosts::fitIntoSquare;
using hosts::Picture;
using Bytes = std::vector<std::uint8_t>;

const Bytes red = {255, 0, 0, 255};
const Bytes black = {0, 0, 0, 255};
const Bytes white = {255, 255, 255, 255};
const Bytes clear = {0, 0, 0, 0};

Picture pictureOf(std::uint32_t width, std::uint32_t height, const std::vector<Bytes>& pixels) {
    Picture picture{width, height, {}};
    for (const Bytes& pixel : pixels)
        picture.rgba.insert(picture.rgba.end(), pixel.begin(), pixel.end());
    return picture;
}

Bytes pixelAt(const Picture& picture, std::uint32_t column, std::uint32_t row) {
    const auto start = picture.rgba.begin() + 4 * (row * picture.width + column);
    return Bytes(start, start + 4);
}

TEST(PictureScaling, leavesAPictureOfTheSizeAsItIs) {
    const Picture picture = variedPicture(58, 58);
    EXPECT_EQ(fitIntoSquare(picture, 58).rgba, picture.rgba);
}

TEST(PictureScaling, doesNotEnlarge) {
    const Picture fitted = fitIntoSquare(plainPicture(29, red), 58);
    EXPECT_EQ(fitted.width, 29U);
    EXPECT_EQ(fitted.rgba, plainPicture(29, red).rgba);
}

TEST(PictureScaling, makesPixelsTheMeanOfTheAreaThatTheyCover) {
    const Picture board = pictureOf(2, 2, {black, white, white, black});
    EXPECT_EQ(fitIntoSquare(board, 1).rgba, (Bytes{128, 128, 128, 255}));

    // Three pixels to two: each covers one and a half.
    const Picture column =
        fitIntoSquare(pictureOf(3, 3, {black, white, white, black, white, white, black, white, white}), 2);
    EXPECT_EQ(pixelAt(column, 0, 0), (Bytes{85, 85, 85, 255}));
    EXPECT_EQ(pixelAt(column, 1, 1), white);
}

TEST(PictureScaling, givesClearPixelsNoSayInTheColour) {
    const Picture edge = pictureOf(2, 2, {red, {0, 255, 0, 0}, red, {0, 255, 0, 0}});
    EXPECT_EQ(fitIntoSquare(edge, 1).rgba, (Bytes{255, 0, 0, 128}));
}

TEST(PictureScaling, givesAClearAreaNoColour) {
    EXPECT_EQ(fitIntoSquare(plainPicture(4, {9, 9, 9, 0}), 2).rgba, plainPicture(2, clear).rgba);
}

TEST(PictureScaling, keepsAPlainColourExactlyAtEverySize) {
    const Bytes colour = {13, 200, 97, 131};
    for (std::uint32_t side = 1; side < 130; ++side) {
        const Picture fitted = fitIntoSquare(plainPicture(130, colour), side);
        ASSERT_EQ(fitted.rgba, plainPicture(side, colour).rgba) << side;
    }
}

TEST(PictureScaling, keepsTheShapeInTheMiddleOfClearGround) {
    const Picture wide = fitIntoSquare(pictureOf(4, 2, std::vector<Bytes>(8, red)), 4);
    ASSERT_EQ(wide.width, 4U);
    ASSERT_EQ(wide.height, 4U);
    EXPECT_EQ(pixelAt(wide, 0, 0), clear);
    EXPECT_EQ(pixelAt(wide, 0, 1), red);
    EXPECT_EQ(pixelAt(wide, 3, 2), red);
    EXPECT_EQ(pixelAt(wide, 3, 3), clear);

    const Picture tall = fitIntoSquare(pictureOf(50, 100, std::vector<Bytes>(5000, red)), 10);
    ASSERT_EQ(tall.width, 10U);
    EXPECT_EQ(pixelAt(tall, 1, 5), clear);
    EXPECT_EQ(pixelAt(tall, 2, 0), red);
    EXPECT_EQ(pixelAt(tall, 6, 9), red);
    EXPECT_EQ(pixelAt(tall, 7, 5), clear);
}

TEST(PictureScaling, keepsAtLeastOnePixelOfEachSide) {
    const Picture line = fitIntoSquare(pictureOf(4096, 1, std::vector<Bytes>(4096, red)), 58);
    ASSERT_EQ(line.width, 58U);
    ASSERT_EQ(line.height, 58U);
    EXPECT_EQ(pixelAt(line, 0, 28), red);
    EXPECT_EQ(pixelAt(line, 57, 28), red);
    EXPECT_EQ(pixelAt(line, 57, 29), clear);
}

}  // namespace
}  // namespace app_list_test
