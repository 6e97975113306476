// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QImage>
#include <QQuickItem>

#include "hosts/desktop/drawing/view_handle.h"

namespace hosts::desktop {

/// Draws a picture over its whole area; its implicit size is the picture's own in points.
class PictureItem : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Picture)
    Q_PROPERTY(hosts::desktop::ImageHandle picture READ picture WRITE setPicture NOTIFY pictureChanged)

public:
    explicit PictureItem(QQuickItem* parent = nullptr);

    const ImageHandle& picture() const { return _picture; }
    void setPicture(const ImageHandle& picture);

signals:
    void pictureChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    ImageHandle _picture;
    QImage _pixels;
    bool _isNew = false;
};

}  // namespace hosts::desktop
