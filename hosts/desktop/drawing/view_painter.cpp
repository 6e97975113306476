// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/view_painter.h"

#include <algorithm>
#include <cmath>

#include "hosts/desktop/drawing/contrast.h"
#include "hosts/desktop/drawing/label_layout.h"
#include "hosts/desktop/drawing/qt_values.h"
#include "platform/ui/button.h"

namespace hosts::desktop {
namespace {

const platform::UIImage* imageIn(const platform::UIView& view) {
    if (auto* picture = dynamic_cast<const platform::UIImageView*>(&view)) return picture->image.get();
    auto* button = dynamic_cast<const platform::UIButton*>(&view);
    return button ? button->imageForState(platform::UIControlStateNormal).get() : nullptr;
}

}  // namespace

void ViewPainter::paint(const platform::UIView& view) {
    paint(view, {}, {}, GrownLayout(view, _style.textScale, _style.wraps));
}

void ViewPainter::paint(const platform::UIView& view, QPointF origin, QPointF parent, const GrownLayout& layout) {
    const QRectF place = layout.placed(view, {origin, QSizeF(view.frame().width, view.frame().height)});
    _painter.save();
    _painter.translate(place.topLeft() - parent);
    if (view.clipsToBounds() && view.cornerRadius() == 0) {
        _painter.setClipRect(QRectF({}, place.size()), Qt::IntersectClip);
    }
    paintContents(view, place.size());
    for (const auto& part : view.subviews())
        paint(*part, origin + QPointF(part->frame().x, part->frame().y), place.topLeft(), layout);
    _painter.restore();
}

void ViewPainter::paintContents(const platform::UIView& view, QSizeF size) {
    if (auto* label = dynamic_cast<const platform::UILabel*>(&view)) return paintLabel(*label, size);
    paintImage(imageIn(view), view, size);
}

// A picture with round corners is painted as a brush: unlike a clip, that leaves a smooth edge.
void ViewPainter::paintImage(const platform::UIImage* image, const platform::UIView& view, QSizeF size) {
    if (!image || size.isEmpty()) return;
    QImage picture = decoded(*image);
    if (picture.isNull()) return;
    picture.setDevicePixelRatio(1);
    const QRectF target = onPixels(QRectF({}, size));
    if (view.cornerRadius() <= 0) {
        _painter.drawImage(target, picture);
        return;
    }
    QBrush brush(picture);
    brush.setTransform(QTransform::fromTranslate(target.x(), target.y())
                           .scale(target.width() / picture.width(), target.height() / picture.height()));
    _painter.setPen(Qt::NoPen);
    _painter.setBrush(brush);
    _painter.drawRoundedRect(target, view.cornerRadius(), view.cornerRadius());
}

void ViewPainter::paintLabel(const platform::UILabel& label, QSizeF size) {
    const LabelLayout layout(label, size, _style.textScale, _style.wraps);
    if (label.shadowColor) {
        const QPointF offset(label.shadowOffset.width, label.shadowOffset.height);
        layout.draw(_painter, offset, shown(*label.shadowColor));
    }
    layout.draw(_painter, {}, readable(label.textColor));
}

// The platform lays out for the phone's pixels; this screen may have others.
QRectF ViewPainter::onPixels(const QRectF& rect) const {
    const QTransform& place = _painter.deviceTransform();
    if (place.type() > QTransform::TxScale) return rect;
    const QRectF device = place.mapRect(rect);
    const QPointF topLeft(std::round(device.left()), std::round(device.top()));
    const QPointF bottomRight(std::round(device.right()), std::round(device.bottom()));
    return place.inverted().mapRect(QRectF(topLeft, bottomRight));
}

QColor ViewPainter::shown(const platform::UIColor& colour) const {
    const QColor given = QColor::fromRgbF(static_cast<float>(colour.red), static_cast<float>(colour.green),
                                          static_cast<float>(colour.blue), static_cast<float>(colour.alpha));
    if (!_style.dark) return given;
    float hue = 0;
    float saturation = 0;
    float lightness = 0;
    float alpha = 0;
    given.getHslF(&hue, &saturation, &lightness, &alpha);
    return QColor::fromHslF(std::max(hue, 0.0F), saturation, 1 - lightness, alpha);
}

QColor ViewPainter::readable(const platform::UIColor& colour) const {
    if (!_style.ground.isValid()) return shown(colour);
    return withContrast(shown(colour), {_style.ground}, _style.contrast);
}

}  // namespace hosts::desktop
