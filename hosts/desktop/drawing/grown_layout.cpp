// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/grown_layout.h"

#include <algorithm>

#include "hosts/desktop/drawing/label_layout.h"

namespace hosts::desktop {

GrownLayout::GrownLayout(const platform::UIView& tree, double textScale, bool wraps) : _height(tree.frame().height) {
    if (textScale <= 1 && !wraps) return;
    collect(tree, {}, textScale);
    _growth = moved(_height) - _height;
}

void GrownLayout::collect(const platform::UIView& view, QPointF origin, double textScale) {
    const QSizeF size(view.frame().width, view.frame().height);
    auto* label = dynamic_cast<const platform::UILabel*>(&view);
    if (label && label->text() && size.height() > 0) {
        const double usual = std::min(LabelLayout(*label, size, 1).textHeight(), size.height());
        const double large = LabelLayout(*label, size, textScale, true).textHeight();
        if (large > usual) _labels.push_back({QRectF(origin, size), large - usual});
    }
    for (const auto& part : view.subviews())
        collect(*part, origin + QPointF(part->frame().x, part->frame().y), textScale);
}

// Pages let labels that stand below one another overlap a little, where lines have room to spare: what
// begins in the lowest part of a label stands below it.
double GrownLayout::moved(double y) const {
    constexpr double overlap = 0.2;
    double result = y;
    for (const GrownLabel& label : _labels) {
        const double part = (y - label.frame.top()) / (label.frame.height() * (1 - overlap));
        result += label.growth * std::clamp(part, 0.0, 1.0);
    }
    return result;
}

bool GrownLayout::isBesideLabels(const QRectF& frame) const {
    return std::ranges::none_of(_labels, [&frame](const GrownLabel& label) {
        return label.frame.left() < frame.right() && frame.left() < label.frame.right();
    });
}

QRectF GrownLayout::placed(const platform::UIView& part, const QRectF& frame) const {
    if (_labels.empty()) return frame;
    const double top = moved(frame.top());
    const double bottom = moved(frame.bottom());
    const bool isPicture = part.subviews().empty() && !dynamic_cast<const platform::UILabel*>(&part);
    if (!isPicture) return {frame.left(), top, frame.width(), bottom - top};
    const double centre = frame.center().y();
    const double newCentre = isBesideLabels(frame) ? centre + _growth * centre / _height : (top + bottom) / 2;
    return frame.translated(0, newCentre - centre);
}

}  // namespace hosts::desktop
