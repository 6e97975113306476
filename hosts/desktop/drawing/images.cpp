// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/images.h"

#include <QImageReader>

namespace hosts::desktop {
namespace {

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

QImage decoded(const platform::UIImage& image) {
    QImage result = pixels(image);
    if (result.isNull()) return result;
    result.convertTo(QImage::Format_ARGB32_Premultiplied);
    result.setDevicePixelRatio(image.scale());
    return result;
}

}  // namespace hosts::desktop
