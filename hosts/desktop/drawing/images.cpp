// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/images.h"

namespace hosts::desktop {
namespace {

QImage pixels(const platform::UIImage& image) {
    if (!image.file().empty()) return QImage(QString::fromStdString(image.file()));
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
