// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>

#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/view.h"

namespace hosts::desktop {

/// Draws view trees. A point of the tree is a logical pixel of the painter.
class ViewPainter {
public:
    /// In the dark appearance, colours take the lightness opposite to their own.
    ViewPainter(QPainter& painter, bool dark) : _painter(painter), _dark(dark) {}

    /// The view with all that it holds, its own frame's origin at the painter's.
    void paint(const platform::UIView& view);

private:
    void paintContents(const platform::UIView& view);
    void paintImage(const platform::UIImage* image, const platform::UIView& view);
    void paintLabel(const platform::UILabel& label);
    QRectF onPixels(const QRectF& rect) const;
    QColor shown(const platform::UIColor& colour) const;

    QPainter& _painter;
    bool _dark;
};

}  // namespace hosts::desktop
