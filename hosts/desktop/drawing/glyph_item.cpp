// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/glyph_item.h"

#include <QPainter>
#include <QPainterPath>

namespace hosts::desktop {
namespace {

QPainterPath line(std::initializer_list<QPointF> points) {
    QPainterPath path(*points.begin());
    for (const QPointF* point = points.begin() + 1; point != points.end(); ++point)
        path.lineTo(*point);
    return path;
}

// A loop of wire within a rectangle one unit wide and high.
QPainterPath paperclip(const QRectF& area) {
    const double unit = area.width();
    const double radius = unit / 2;
    QPainterPath path(QPointF(area.left() + unit * 0.72, area.top() + area.height() * 0.3));
    path.lineTo(area.left() + unit * 0.72, area.bottom() - radius);
    path.arcTo(QRectF(area.left() + unit * 0.28, area.bottom() - radius - unit * 0.22, unit * 0.44, unit * 0.44), 0,
               -180);
    path.lineTo(area.left() + unit * 0.28, area.top() + radius);
    path.arcTo(QRectF(area.left() + unit * 0.28, area.top(), unit * 0.72, unit * 0.72), 180, -180);
    path.lineTo(area.right(), area.bottom() - radius);
    path.arcTo(QRectF(area.left(), area.bottom() - unit, unit, unit), 0, -180);
    path.lineTo(area.left(), area.top() + area.height() * 0.35);
    return path;
}

// Three of them within a circle.
QPainterPath dots(const QRectF& area) {
    QPainterPath path;
    path.addEllipse(area);
    const double radius = area.width() * 0.04;
    for (const double place : {-0.24, 0.0, 0.24})
        path.addEllipse(area.center() + QPointF(area.width() * place, 0), radius, radius);
    return path;
}

QPainterPath pathOf(GlyphItem::Shape shape, const QRectF& area) {
    switch (shape) {
        case GlyphItem::Disclosure:
            return line({area.topLeft(), {area.right(), area.center().y()}, area.bottomLeft()});
        case GlyphItem::Back:
            return line({area.topRight(), {area.left(), area.center().y()}, area.bottomRight()});
        case GlyphItem::Checkmark:
            return line({{area.left(), area.top() + area.height() * 0.55},
                         {area.left() + area.width() * 0.34, area.bottom()},
                         area.topRight()});
        case GlyphItem::Paperclip:
            return paperclip(area);
        case GlyphItem::Dots:
            return dots(area);
    }
    return {};
}

}  // namespace

GlyphItem::GlyphItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void GlyphItem::setShape(Shape shape) {
    if (_shape == shape) return;
    _shape = shape;
    update();
    emit shapeChanged();
}

void GlyphItem::setColor(const QColor& color) {
    if (_color == color) return;
    _color = color;
    update();
    emit colorChanged();
}

void GlyphItem::setStroke(qreal stroke) {
    if (qFuzzyCompare(_stroke, stroke)) return;
    _stroke = stroke;
    update();
    emit strokeChanged();
}

void GlyphItem::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    QPen pen(_color, _stroke, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    if (_shape == Paperclip) pen.setJoinStyle(Qt::RoundJoin);
    painter->setPen(pen);
    const qreal inset = _stroke * 0.75;
    painter->drawPath(pathOf(_shape, boundingRect().adjusted(inset, inset, -inset, -inset)));
}

}  // namespace hosts::desktop
