// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPainter>
#include <QTextLayout>

#include "platform/ui/label.h"

namespace hosts::desktop {

/// A label's text broken into the lines that it shows, aligned within a size and centred from top to
/// bottom. At the usual scale these are at most as many as the label allows, and what does not fit
/// ends in an ellipsis; larger texts, and those that wrap, take the lines that they need.
class LabelLayout {
public:
    /// The label outlives its layout.
    LabelLayout(const platform::UILabel& label, QSizeF size, double textScale, bool wraps = false);

    /// Of the lines, in points.
    double textHeight() const;

    /// `offset` is from the label's own origin.
    void draw(QPainter& painter, QPointF offset, const QColor& colour) const;

private:
    void breakLines(int most);
    void elideLastLine(const QTextLine& last);
    QFont firstFont() const;

    const platform::UILabel& _label;
    QSizeF _size;
    bool _isFree;
    QTextLayout _text;
    int _lines = 0;
    // The last line's text when it had to be cut.
    QString _elided;
};

}  // namespace hosts::desktop
