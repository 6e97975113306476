// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "hosts/desktop/drawing/view_painter.h"
#include "tests/desktop/desk.h"

namespace desktop_tests {
namespace {

constexpr int canvas = 60;

QImage painted(const platform::UIView& view, bool dark = false, double scale = 1) {
    const int side = static_cast<int>(canvas * scale);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    hosts::desktop::ViewPainter(painter, {.dark = dark}).paint(view);
    return image;
}

// The smallest rectangle that holds everything drawn.
QRect inked(const QImage& image) {
    QRect all;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) all |= QRect(x, y, 1, 1);
        }
    }
    return all;
}

std::shared_ptr<const platform::UIImage> redImage(std::uint32_t side) {
    std::vector<std::uint8_t> pixels;
    for (std::uint32_t i = 0; i < side * side; ++i)
        pixels.insert(pixels.end(), {255, 0, 0, 255});
    return platform::UIImage::fromPixels("Red", side, side, std::move(pixels), 1);
}

std::shared_ptr<platform::UILabel> label(platform::CGRect frame, const char* text) {
    auto made = std::make_shared<platform::UILabel>(frame);
    made->setText(text);
    made->font = platform::UIFont::systemFontOfSize(12);
    return made;
}

}  // namespace

TEST(ViewPainter, paintsImagesWhereTheirViewsAre) {
    platform::UIView root({0, 0, canvas, canvas});
    auto image = std::make_shared<platform::UIImageView>(platform::CGRect{10, 20, 30, 15});
    image->image = redImage(8);
    root.addSubview(image);
    EXPECT_EQ(inked(painted(root)), QRect(10, 20, 30, 15));
}

TEST(ViewPainter, putsEdgesOnTheScreensOwnPixels) {
    platform::UIView root({0, 0, canvas, canvas});
    auto image = std::make_shared<platform::UIImageView>(platform::CGRect{10.25, 20, 30, 15});
    image->image = redImage(8);
    root.addSubview(image);
    const QImage result = painted(root, false, 1.5);
    EXPECT_EQ(qAlpha(result.pixel(15, 40)), 255);
    EXPECT_EQ(qAlpha(result.pixel(14, 40)), 0);
}

TEST(ViewPainter, roundsCornersAndLeavesTheMiddle) {
    platform::UIView root({0, 0, canvas, canvas});
    auto image = std::make_shared<platform::UIImageView>(platform::CGRect{0, 0, 60, 60});
    image->image = redImage(60);
    image->setCornerRadius(30);
    image->setClipsToBounds(true);
    root.addSubview(image);
    const QImage result = painted(root);
    EXPECT_EQ(qAlpha(result.pixel(1, 1)), 0);
    EXPECT_EQ(result.pixelColor(30, 30), QColor(Qt::red));
    EXPECT_EQ(qAlpha(result.pixel(30, 1)), 255);
}

TEST(ViewPainter, alignsLabels) {
    auto middleOf = [](platform::NSTextAlignment alignment) {
        auto text = label({0, 0, canvas, 20}, "I");
        text->textAlignment = alignment;
        return inked(painted(*text)).center().x();
    };
    EXPECT_LT(middleOf(platform::NSTextAlignment::left), 8);
    EXPECT_NEAR(middleOf(platform::NSTextAlignment::center), canvas / 2, 1.5);
    EXPECT_GT(middleOf(platform::NSTextAlignment::right), canvas - 8);
}

TEST(ViewPainter, drawsNoMoreLinesThanTheLabelAllows) {
    auto text = label({0, 0, canvas, 60}, "one\ntwo\nthree");
    text->numberOfLines = 1;
    const int single = inked(painted(*text)).height();
    text->numberOfLines = 3;
    EXPECT_GT(inked(painted(*text)).height(), 2.5 * single);
}

TEST(ViewPainter, cutsTextThatIsTooWide) {
    constexpr int width = canvas - 20;
    auto text = label({0, 0, width, 20}, "far too long for forty points of width");
    EXPECT_LT(inked(painted(*text)).right(), width);
    EXPECT_GT(inked(painted(*text)).right(), width - 12);
}

TEST(ViewPainter, drawsAttributedRunsInTheirFonts) {
    auto text = label({0, 0, canvas, 30}, "");
    text->setAttributedText({{"II", platform::UIFont::systemFontOfSize(10)}});
    const int small = inked(painted(*text)).height();
    text->setAttributedText(
        {{"I", platform::UIFont::systemFontOfSize(10)}, {"I", platform::UIFont::boldSystemFontOfSize(24)}});
    EXPECT_GT(inked(painted(*text)).height(), 1.8 * small);
}

TEST(ViewPainter, turnsBlackTextWhiteInTheDark) {
    auto text = label({0, 0, canvas, 40}, "I");
    text->font = platform::UIFont::boldSystemFontOfSize(36);
    const QRect ink = inked(painted(*text));
    EXPECT_LT(painted(*text).pixelColor(ink.center()).lightness(), 20);
    EXPECT_GT(painted(*text, true).pixelColor(ink.center()).lightness(), 235);
}

TEST_F(Desk, darkAppearanceIsDark) {
    open();
    const QColor light = view().grabWindow().pixelColor(2, 60);
    session->window().setDark(true);
    settle();
    const QColor dark = view().grabWindow().pixelColor(2, 60);
    EXPECT_GT(light.lightness(), 200);
    EXPECT_LT(dark.lightness(), 50);
}

}  // namespace desktop_tests
