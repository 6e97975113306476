// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/view_tree_item.h"

#include "hosts/desktop/drawing/view_painter.h"

namespace hosts::desktop {

ViewTreeItem::ViewTreeItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void ViewTreeItem::setTree(const ViewHandle& tree) {
    if (_tree == tree) return;
    _tree = tree;
    const platform::CGRect frame = tree.view ? tree.view->frame() : platform::CGRect{};
    setImplicitSize(frame.width, frame.height);
    update();
    emit treeChanged();
}

void ViewTreeItem::setDark(bool dark) {
    if (_dark == dark) return;
    _dark = dark;
    update();
    emit darkChanged();
}

void ViewTreeItem::paint(QPainter* painter) {
    if (!_tree.view) return;
    painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    ViewPainter(*painter, _dark).paint(*_tree.view);
}

}  // namespace hosts::desktop
