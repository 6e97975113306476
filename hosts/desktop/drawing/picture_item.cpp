// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/picture_item.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <memory>

#include "hosts/desktop/drawing/images.h"

namespace hosts::desktop {

PictureItem::PictureItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void PictureItem::setPicture(const ImageHandle& picture) {
    if (_picture == picture) return;
    _picture = picture;
    _pixels = picture.image ? decoded(*picture.image) : QImage();
    _isNew = true;
    setImplicitSize(picture.image ? picture.image->size().width : 0, picture.image ? picture.image->size().height : 0);
    update();
    emit pictureChanged();
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
