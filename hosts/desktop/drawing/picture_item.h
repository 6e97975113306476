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
    /// By how much the corners are rounded, in points.
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)

public:
    explicit PictureItem(QQuickItem* parent = nullptr);

    const ImageHandle& picture() const { return _picture; }
    void setPicture(const ImageHandle& picture);
    qreal radius() const { return _radius; }
    void setRadius(qreal radius);

signals:
    void pictureChanged();
    void radiusChanged();

protected:
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    ImageHandle _picture;
    qreal _radius = 0;
    QImage _pixels;
    bool _isNew = false;
};

}  // namespace hosts::desktop
