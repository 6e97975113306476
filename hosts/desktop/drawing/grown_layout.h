// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <vector>

#include "platform/ui/view.h"

namespace hosts::desktop {

/// Where the parts of a view tree stand when its texts are larger than the page has laid them out
/// for, or have less room and wrap. Each label keeps its width and what room it has above and below its lines, and
/// becomes as much higher as its lines do; what stands below moves down. Pictures keep their size: one beside the
/// labels stays as far down the tree as it was. Frames are in points, from the tree's own origin.
class GrownLayout {
public:
    GrownLayout(const platform::UIView& tree, double textScale, bool wraps = false);

    double height() const { return _height + _growth; }

    /// Where a part stands that the page has put at `frame`.
    QRectF placed(const platform::UIView& part, const QRectF& frame) const;

private:
    struct GrownLabel {
        QRectF frame;
        double growth;
    };

    void collect(const platform::UIView& view, QPointF origin, double textScale);
    double moved(double y) const;
    bool isBesideLabels(const QRectF& frame) const;

    std::vector<GrownLabel> _labels;
    double _height;
    double _growth = 0;
};

}  // namespace hosts::desktop
