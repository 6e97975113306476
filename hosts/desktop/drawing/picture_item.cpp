// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/picture_item.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>
#include <QSGImageNode>
#include <memory>

#include "hosts/desktop/drawing/qt_values.h"

namespace hosts::desktop {
namespace {

void roundCorners(QImage& image, qreal radius) {
    QPainterPath shape;
    shape.addRoundedRect(QRectF({0, 0}, image.deviceIndependentSize()), radius, radius);
    QImage mask(image.size(), QImage::Format_ARGB32_Premultiplied);
    mask.setDevicePixelRatio(image.devicePixelRatio());
    mask.fill(Qt::transparent);
    QPainter maskPainter(&mask);
    maskPainter.setRenderHint(QPainter::Antialiasing);
    maskPainter.fillPath(shape, Qt::black);
    maskPainter.end();
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(QPointF(0, 0), mask);
}

}  // namespace

PictureItem::PictureItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void PictureItem::setPicture(const ImageHandle& picture) {
    if (_picture == picture) return;
    _picture = picture;
    polish();
    setImplicitSize(picture.image ? picture.image->size().width : 0, picture.image ? picture.image->size().height : 0);
    emit pictureChanged();
}

void PictureItem::setRadius(qreal radius) {
    if (qFuzzyCompare(_radius, radius)) return;
    _radius = radius;
    polish();
    emit radiusChanged();
}

// Once for all that has been set since the last picture.
void PictureItem::updatePolish() {
    _pixels = _picture.image ? decoded(*_picture.image) : QImage();
    if (!_pixels.isNull() && _radius > 0) roundCorners(_pixels, _radius);
    _isNew = true;
    update();
}

QSGNode* PictureItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    // The scene graph's nodes are handed over from call to call, and one that is not is ours to end.
    std::unique_ptr<QSGImageNode> node(static_cast<QSGImageNode*>(old));
    if (_pixels.isNull() || width() <= 0 || height() <= 0) return nullptr;
    if (!node) {
        node.reset(window()->createImageNode());
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
        node->setMipmapFiltering(QSGTexture::Linear);
        _isNew = true;
    }
    if (_isNew) node->setTexture(window()->createTextureFromImage(_pixels, QQuickWindow::TextureHasMipmaps));
    _isNew = false;
    node->setRect(boundingRect());
    return node.release();
}

}  // namespace hosts::desktop
