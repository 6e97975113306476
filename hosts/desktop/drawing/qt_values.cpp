// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/qt_values.h"

#include <QImageReader>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace hosts::desktop {
namespace {

struct Face {
    std::string_view suffix;
    QFont::Weight weight;
};

constexpr std::array<Face, 8> faces = {{
    {"-UltraLight", QFont::Thin},
    {"-Thin", QFont::ExtraLight},
    {"-Light", QFont::Light},
    {"-Medium", QFont::Medium},
    {"-SemiBold", QFont::DemiBold},
    {"-DemiBold", QFont::DemiBold},
    {"-Bold", QFont::Bold},
    {"-Heavy", QFont::ExtraBold},
}};

// From this size on, the cut with finer detail and tighter spacing is the one that looks right.
constexpr double displaySize = 28;

const QStringList& families(double pointSize) {
    static const QStringList fallbacks = {"Inter", "Noto Sans", "Liberation Sans", "DejaVu Sans", "sans-serif"};
    static const QStringList display = QStringList{"Inter Display"} + fallbacks;
    return pointSize >= displaySize ? display : fallbacks;
}

QFont::Weight weightOf(std::string_view name) {
    if (name == platform::UIFont::boldSystemName) return QFont::Bold;
    auto face = std::ranges::find_if(faces, [name](const Face& each) { return name.ends_with(each.suffix); });
    return face == faces.end() ? QFont::Normal : face->weight;
}

// Told what it reads, the reader does not load every plug-in that there is to ask.
QImage readPng(const QString& file) {
    QImageReader reader(file, "png");
    reader.setAutoDetectImageFormat(false);
    return reader.read();
}

QImage pixels(const platform::UIImage& image) {
    if (!image.file().empty()) return readPng(QString::fromStdString(image.file()));
    const auto width = static_cast<int>(image.pixelWidth());
    const auto height = static_cast<int>(image.pixelHeight());
    // The copy outlives the image, whose bytes a QImage of them would only borrow.
    return QImage(image.rgba().data(), width, height, width * 4, QImage::Format_RGBA8888).copy();
}

}  // namespace

QFont systemFont(double pointSize) {
    QFont font(families(pointSize));
    font.setPixelSize(static_cast<int>(std::lround(pointSize)));
    font.setLetterSpacing(QFont::PercentageSpacing, 98);
    return font;
}

QFont fontOf(const platform::UIFont& font, double textScale) {
    QFont result = systemFont(font.pointSize * textScale);
    result.setWeight(weightOf(font.name));
    return result;
}

QImage decoded(const platform::UIImage& image) {
    QImage result = pixels(image);
    if (result.isNull()) return result;
    result.convertTo(QImage::Format_ARGB32_Premultiplied);
    result.setDevicePixelRatio(image.scale());
    return result;
}

}  // namespace hosts::desktop
