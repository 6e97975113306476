// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPainter>

#include "hosts/desktop/drawing/grown_layout.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/view.h"

namespace hosts::desktop {

/// How view trees are drawn.
struct ViewStyle {
    /// In the dark appearance, colours take the lightness opposite to their own.
    bool dark = false;
    /// How large texts are, 1 being as large as the page says.
    double textScale = 1;
    /// Whether texts take the lines that they need, as larger ones do: there is less room than the page was made for.
    bool wraps = false;
    /// What texts stand on, and how much they differ from it at least, whatever their own colour.
    QColor ground = {};
    double contrast = 1;

    bool operator==(const ViewStyle&) const = default;
};

/// Draws view trees. A point of the tree is a logical pixel of the painter.
class ViewPainter {
public:
    ViewPainter(QPainter& painter, const ViewStyle& style) : _painter(painter), _style(style) {}

    /// The view with all that it holds, its own frame's origin at the painter's.
    void paint(const platform::UIView& view);

private:
    // `origin` is where the page has put the view, `parent` where its parent is drawn.
    void paint(const platform::UIView& view, QPointF origin, QPointF parent, const GrownLayout& layout);
    void paintContents(const platform::UIView& view, QSizeF size);
    void paintImage(const platform::UIImage* image, const platform::UIView& view, QSizeF size);
    void paintLabel(const platform::UILabel& label, QSizeF size);
    QRectF onPixels(const QRectF& rect) const;
    QColor shown(const platform::UIColor& colour) const;
    QColor readable(const platform::UIColor& colour) const;

    QPainter& _painter;
    ViewStyle _style;
};

}  // namespace hosts::desktop
