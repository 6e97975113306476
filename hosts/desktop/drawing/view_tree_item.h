// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QQuickPaintedItem>

#include "hosts/desktop/drawing/view_handle.h"

namespace hosts::desktop {

/// Draws a view tree; its implicit size is the tree's own.
class ViewTreeItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(ViewTree)
    Q_PROPERTY(hosts::desktop::ViewHandle tree READ tree WRITE setTree NOTIFY treeChanged)
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY darkChanged)

public:
    explicit ViewTreeItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    const ViewHandle& tree() const { return _tree; }
    void setTree(const ViewHandle& tree);
    bool isDark() const { return _dark; }
    void setDark(bool dark);

signals:
    void treeChanged();
    void darkChanged();

private:
    ViewHandle _tree;
    bool _dark = false;
};

}  // namespace hosts::desktop
