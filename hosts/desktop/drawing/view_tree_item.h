// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QQuickPaintedItem>

#include "hosts/desktop/drawing/view_handle.h"
#include "hosts/desktop/drawing/view_painter.h"

namespace hosts::desktop {

/// Draws a view tree; its implicit size is the tree's own, as high as its texts need.
class ViewTreeItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(ViewTree)
    Q_PROPERTY(hosts::desktop::ViewHandle tree READ tree WRITE setTree NOTIFY treeChanged)
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY styleChanged)
    Q_PROPERTY(qreal textScale READ textScale WRITE setTextScale NOTIFY styleChanged)
    Q_PROPERTY(bool wraps READ wraps WRITE setWraps NOTIFY styleChanged)
    /// What the tree is drawn on, and how much its texts differ from that at least.
    Q_PROPERTY(QColor ground READ ground WRITE setGround NOTIFY styleChanged)
    Q_PROPERTY(qreal contrast READ contrast WRITE setContrast NOTIFY styleChanged)

public:
    explicit ViewTreeItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    const ViewHandle& tree() const { return _tree; }
    void setTree(const ViewHandle& tree);
    bool isDark() const { return _style.dark; }
    void setDark(bool dark);
    qreal textScale() const { return _style.textScale; }
    void setTextScale(qreal scale);
    bool wraps() const { return _style.wraps; }
    void setWraps(bool wraps);
    const QColor& ground() const { return _style.ground; }
    void setGround(const QColor& ground);
    qreal contrast() const { return _style.contrast; }
    void setContrast(qreal contrast);

signals:
    void treeChanged();
    void styleChanged();

private:
    void setStyle(const ViewStyle& style);
    void measure();

    ViewHandle _tree;
    ViewStyle _style;
};

}  // namespace hosts::desktop
