// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/view_tree_item.h"

namespace hosts::desktop {

ViewTreeItem::ViewTreeItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void ViewTreeItem::setTree(const ViewHandle& tree) {
    if (_tree == tree) return;
    _tree = tree;
    measure();
    update();
    emit treeChanged();
}

void ViewTreeItem::setDark(bool dark) {
    ViewStyle style = _style;
    style.dark = dark;
    setStyle(style);
}

void ViewTreeItem::setTextScale(qreal scale) {
    ViewStyle style = _style;
    style.textScale = scale;
    setStyle(style);
}

void ViewTreeItem::setWraps(bool wraps) {
    ViewStyle style = _style;
    style.wraps = wraps;
    setStyle(style);
}

void ViewTreeItem::setGround(const QColor& ground) {
    ViewStyle style = _style;
    style.ground = ground;
    setStyle(style);
}

void ViewTreeItem::setContrast(qreal contrast) {
    ViewStyle style = _style;
    style.contrast = contrast;
    setStyle(style);
}

void ViewTreeItem::setStyle(const ViewStyle& style) {
    if (_style == style) return;
    _style = style;
    measure();
    update();
    emit styleChanged();
}

void ViewTreeItem::measure() {
    if (!_tree.view) return setImplicitSize(0, 0);
    setImplicitSize(_tree.view->frame().width, GrownLayout(*_tree.view, _style.textScale, _style.wraps).height());
}

void ViewTreeItem::paint(QPainter* painter) {
    if (!_tree.view) return;
    painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    ViewPainter(*painter, _style).paint(*_tree.view);
}

}  // namespace hosts::desktop
