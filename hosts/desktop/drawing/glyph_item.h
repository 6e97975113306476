// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QColor>
#include <QQuickPaintedItem>

namespace hosts::desktop {

/// One of the signs that the platform draws itself, as a stroke that fills the item's height.
class GlyphItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Glyph)
    Q_PROPERTY(Shape shape READ shape WRITE setShape NOTIFY shapeChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(qreal stroke READ stroke WRITE setStroke NOTIFY strokeChanged)

public:
    enum Shape { Disclosure, Back, Checkmark, Paperclip, Dots };
    Q_ENUM(Shape)

    explicit GlyphItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    Shape shape() const { return _shape; }
    void setShape(Shape shape);
    const QColor& color() const { return _color; }
    void setColor(const QColor& color);
    qreal stroke() const { return _stroke; }
    void setStroke(qreal stroke);

signals:
    void shapeChanged();
    void colorChanged();
    void strokeChanged();

private:
    Shape _shape = Disclosure;
    QColor _color = Qt::black;
    qreal _stroke = 2;
};

}  // namespace hosts::desktop
