// SPDX-License-Identifier: MIT
#include "hosts/app_list/png_picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/kit/png_maker.h"

namespace app_list_test {

using namespace kit;

namespace {

using hosts::decodePng;

constexpr std::uint32_t width = 13;
constexpr std::uint32_t height = 11;

std::size_t channelsOf(ColourType type) {
    switch (type) {
        case ColourType::grey:
        case ColourType::palette:
            return 1;
        case ColourType::greyAlpha:
            return 2;
        case ColourType::colour:
            return 3;
        case ColourType::colourAlpha:
            break;
    }
    return 4;
}

/// A sample's value, of eight bits at most: one of 16 bits repeats it.
unsigned sampleAt(const PngForm& form, std::size_t row, std::size_t column, std::size_t channel) {
    const unsigned range = form.bitDepth >= 8 ? 256U : 1U << form.bitDepth;
    return static_cast<unsigned>(row * 31 + column * 7 + channel * 91) % range;
}

std::string packedRow(const PngForm& form, std::size_t row) {
    std::string bytes;
    unsigned pending = 0;
    int bits = 0;
    for (std::size_t column = 0; column < width; ++column) {
        for (std::size_t channel = 0; channel < channelsOf(form.type); ++channel) {
            const unsigned sample = sampleAt(form, row, column, channel);
            pending = pending << form.bitDepth | (form.bitDepth == 16 ? sample * 257 : sample);
            for (bits += form.bitDepth; bits >= 8; bits -= 8)
                bytes += static_cast<char>(pending >> (bits - 8) & 0xFF);
        }
    }
    if (bits > 0) bytes += static_cast<char>(pending << (8 - bits) & 0xFF);
    return bytes;
}

std::vector<std::uint8_t> expectedPixel(const PngForm& form, std::size_t row, std::size_t column) {
    const unsigned greatest = form.bitDepth >= 8 ? 255U : (1U << form.bitDepth) - 1;
    const auto component = [&](std::size_t channel) {
        return static_cast<std::uint8_t>(sampleAt(form, row, column, channel) * 255 / greatest);
    };
    switch (form.type) {
        case ColourType::grey:
            return {component(0), component(0), component(0), 255};
        case ColourType::palette:
            return paletteColour(static_cast<int>(sampleAt(form, row, column, 0)));
        case ColourType::greyAlpha:
            return {component(0), component(0), component(0), component(1)};
        case ColourType::colour:
            return {component(0), component(1), component(2), 255};
        case ColourType::colourAlpha:
            break;
    }
    return {component(0), component(1), component(2), component(3)};
}

std::string encodedForm(const PngForm& form) {
    std::vector<std::string> rows;
    for (std::size_t row = 0; row < height; ++row)
        rows.push_back(packedRow(form, row));
    return encodePng(form, width, height, rows);
}

std::vector<PngForm> allForms() {
    std::vector<PngForm> forms;
    for (const bool interlaced : {false, true}) {
        for (const int depth : {1, 2, 4, 8}) {
            forms.push_back({ColourType::grey, depth, interlaced});
            forms.push_back({ColourType::palette, depth, interlaced});
        }
        for (const int depth : {8, 16}) {
            forms.push_back({ColourType::colour, depth, interlaced});
            forms.push_back({ColourType::greyAlpha, depth, interlaced});
            forms.push_back({ColourType::colourAlpha, depth, interlaced});
        }
        forms.push_back({ColourType::grey, 16, interlaced});
    }
    return forms;
}

class PngPictureOfForm : public testing::TestWithParam<PngForm> {};
INSTANTIATE_TEST_SUITE_P(EveryForm, PngPictureOfForm, testing::ValuesIn(allForms()));

TEST_P(PngPictureOfForm, hasTheColoursOfTheFile) {
    const auto picture = decodePng(encodedForm(GetParam()));
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->width, width);
    ASSERT_EQ(picture->height, height);
    std::vector<std::uint8_t> expected;
    for (std::size_t row = 0; row < height; ++row) {
        for (std::size_t column = 0; column < width; ++column) {
            const auto pixel = expectedPixel(GetParam(), row, column);
            expected.insert(expected.end(), pixel.begin(), pixel.end());
        }
    }
    EXPECT_EQ(picture->rgba, expected);
}

TEST_P(PngPictureOfForm, isRefusedWhereverTheFileIsCutShort) {
    const std::string file = encodedForm(GetParam());
    for (std::size_t length = 0; length < file.size(); ++length) {
        ASSERT_FALSE(decodePng(std::string_view(file).substr(0, length))) << length;
    }
}

TEST(PngPicture, isRefusedWhenAnyOfItsBytesIsDamaged) {
    const std::string file = encodePng(variedPicture(5, 4));
    const std::size_t endOfData = file.size() - chunk("IEND", {}).size();
    for (std::size_t position = 0; position < endOfData; ++position) {
        std::string damaged = file;
        damaged[position] = static_cast<char>(damaged[position] ^ 0x10);
        ASSERT_FALSE(decodePng(damaged)) << position;
    }
}

TEST(PngPicture, isRefusedWhenItIsNoPng) {
    EXPECT_FALSE(decodePng(""));
    EXPECT_FALSE(decodePng("<svg/>"));
    EXPECT_FALSE(decodePng("\xFF\xD8\xFF\xE0 a photograph"));
    EXPECT_FALSE(decodePng(pngSignature));
    EXPECT_FALSE(decodePng(std::string(pngSignature) + chunk("IEND", {})));
    EXPECT_FALSE(decodePng(std::string(pngSignature) + headerChunk(4, 4) + chunk("IEND", {})));
}

std::string withHeader(std::uint32_t sideX, std::uint32_t sideY, const PngForm& form = {}) {
    return std::string(pngSignature) + headerChunk(sideX, sideY, form) +
           chunk("IDAT", compressedZeros(1 << 20, false)) + chunk("IEND", {});
}

TEST(PngPicture, isRefusedByItsHeaderWhenASideIsOutOfRange) {
    constexpr std::uint32_t sides[] = {0, hosts::longestPngSide + 1, 100'000, 0x7FFFFFFF, 0xFFFFFFFF};
    for (const std::uint32_t side : sides) {
        EXPECT_FALSE(decodePng(withHeader(side, side))) << side;
        EXPECT_FALSE(decodePng(withHeader(1, side))) << side;
        EXPECT_FALSE(decodePng(withHeader(side, 1))) << side;
        EXPECT_FALSE(hosts::readPngHeader(withHeader(side, 1))) << side;
    }
}

TEST(PngPicture, isRefusedWhenItsDataIsTooShortForItsHeader) {
    EXPECT_FALSE(decodePng(withHeader(hosts::longestPngSide, hosts::longestPngSide)));
}

TEST(PngPicture, isRefusedWhenItsHeaderSaysWhatThereIsNot) {
    EXPECT_FALSE(decodePng(withHeader(4, 4, {ColourType{5}, 8})));
    EXPECT_FALSE(decodePng(withHeader(4, 4, {ColourType::colour, 4})));
    EXPECT_FALSE(decodePng(withHeader(4, 4, {ColourType::grey, 0})));
    EXPECT_FALSE(decodePng(withHeader(4, 4, {ColourType::grey, 255})));
    EXPECT_FALSE(decodePng(withHeader(4, 4, {ColourType::palette, 8}))) << "no palette";
}

TEST(PngPicture, mayBeAsLargeAsTheLimit) {
    const std::uint32_t side = hosts::longestPngSide;
    const PngForm form{ColourType::grey, 1};
    const std::string rows = compressedZeros(std::size_t{side} * (1 + side / 8), false);
    const auto picture =
        decodePng(std::string(pngSignature) + headerChunk(side, side, form) + chunk("IDAT", rows) + chunk("IEND", {}));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->rgba.size(), std::size_t{4} * side * side);
}

TEST(PngPicture, isDecodedWithoutUnfoldingTheTextsBesideIt) {
    const std::string file = encodePng(variedPicture(3, 3));
    const std::size_t behindHeader = pngSignature.size() + headerChunk(3, 3).size();
    std::string bomb = file.substr(0, behindHeader);
    const std::string text = chunk("zTXt", std::string("a\0\0", 3) + compressedZeros(std::size_t{1} << 22, false));
    while (bomb.size() < std::size_t{4} << 20)
        bomb += text;
    bomb += chunk("zTXt", "damaged") + file.substr(behindHeader);
    EXPECT_TRUE(decodePng(bomb));
}

}  // namespace
}  // namespace app_list_test
