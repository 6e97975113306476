// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>
#include <QTextLayout>
#include <memory>

#include "platform/ui/label.h"

namespace hosts::desktop {

/// A label's text broken into the lines that it shows: at most as many as the label allows, aligned
/// within its frame and centred from top to bottom. What does not fit ends in an ellipsis.
class LabelLayout {
public:
    explicit LabelLayout(const platform::UILabel& label);

    /// `offset` is from the label's own origin.
    void draw(QPainter& painter, QPointF offset, const QColor& colour);

private:
    void breakLines(int most);
    void elideLastLine(const QTextLine& last);
    double textHeight() const;

    const platform::UILabel& _label;
    QTextLayout _text;
    int _lines = 0;
    /// The last line's text when it had to be cut.
    QString _elided;
};

}  // namespace hosts::desktop
