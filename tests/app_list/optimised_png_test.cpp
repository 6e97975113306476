// SPDX-License-Identifier: MIT
// Pictures in the phone's own form of PNG.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "hosts/app_list/png_picture.h"
#include "tests/kit/png_maker.h"

namespace app_list_test {

using namespace kit;

namespace {

using hosts::decodePng;

class OptimisedPng : public testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(PlainAndInterlaced, OptimisedPng, testing::Bool());

// Premultiplying rounds each component to one of `alpha` steps.
void expectSameToTheEye(const hosts::Picture& actual, const hosts::Picture& wanted) {
    ASSERT_EQ(actual.rgba.size(), wanted.rgba.size());
    for (std::size_t pixel = 0; pixel < wanted.rgba.size(); pixel += 4) {
        const int alpha = wanted.rgba[pixel + 3];
        ASSERT_EQ(actual.rgba[pixel + 3], alpha);
        const int tolerance = alpha == 0 ? 255 : 255 / (2 * alpha) + 1;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const int difference = actual.rgba[pixel + channel] - wanted.rgba[pixel + channel];
            ASSERT_LE(std::abs(difference), alpha == 255 ? 0 : tolerance) << pixel / 4;
        }
    }
}

TEST_P(OptimisedPng, hasTheColoursOfThePictureItWasMadeFrom) {
    const hosts::Picture picture = variedPicture(61, 47);
    const std::string file = encodeOptimisedPng(picture, GetParam());
    ASSERT_TRUE(hosts::readPngHeader(file)->optimised);
    const auto decoded = decodePng(file);
    ASSERT_TRUE(decoded);
    expectSameToTheEye(*decoded, picture);
}

TEST_P(OptimisedPng, isRefusedWhereverTheFileIsCutShort) {
    const std::string file = encodeOptimisedPng(variedPicture(9, 7), GetParam());
    for (std::size_t length = 0; length < file.size(); ++length) {
        ASSERT_FALSE(decodePng(std::string_view(file).substr(0, length))) << length;
    }
}

TEST(OptimisedPngFile, givesClearPixelsNoColour) {
    const auto decoded = decodePng(encodeOptimisedPng(plainPicture(2, {200, 100, 50, 0})));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->rgba, plainPicture(2, {0, 0, 0, 0}).rgba);
}

TEST(OptimisedPngFile, keepsComponentsThatAreBrighterThanTheirOpacityInRange) {
    const auto decoded = decodePng(optimised(encodePng(plainPicture(2, {255, 128, 10, 128}))));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->rgba, plainPicture(2, {20, 255, 255, 128}).rgba);
}

TEST(OptimisedPngFile, isBlueFirstWithoutAlphaToo) {
    const std::string pixel = "\x01\x02\x03";
    const auto decoded = decodePng(optimised(encodePng({ColourType::colour, 8}, 1, 1, {pixel})));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->rgba, (std::vector<std::uint8_t>{3, 2, 1, 255}));
}

TEST(OptimisedPngFile, keepsAPaletteAsItIs) {
    const auto decoded = decodePng(optimised(encodePng({ColourType::palette, 8}, 1, 1, {"\x05"})));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->rgba, paletteColour(5));
}

std::string markedFile(std::uint32_t side, std::string_view data) {
    return std::string(pngSignature) + chunk("CgBI", "\x50\x01 \x02") + headerChunk(side, side) + chunk("IDAT", data) +
           chunk("IEND", {});
}

TEST(OptimisedPngFile, isRefusedWhenItsDataIsDamaged) {
    EXPECT_FALSE(decodePng(markedFile(4, "not compressed")));
    EXPECT_FALSE(decodePng(markedFile(4, "")));
}

TEST(OptimisedPngFile, isRefusedWhenItsDataUnfoldsToMoreThanItsPixels) {
    const std::size_t rows = std::size_t{4} * (1 + 4 * 4);
    EXPECT_TRUE(decodePng(markedFile(4, compressedZeros(rows, true))));
    EXPECT_FALSE(decodePng(markedFile(4, compressedZeros(rows + 1, true))));
    EXPECT_FALSE(decodePng(markedFile(4, compressedZeros(std::size_t{1} << 26, true))));
}

TEST(OptimisedPngFile, isRefusedWhenItsDataUnfoldsToLessThanItsPixels) {
    EXPECT_FALSE(decodePng(markedFile(4096, compressedZeros(4096, true))));
}

TEST(OptimisedPngFile, isRefusedByItsHeaderWhenASideIsOutOfRange) {
    EXPECT_FALSE(decodePng(markedFile(100'000, compressedZeros(4096, true))));
}

}  // namespace
}  // namespace app_list_test
