// SPDX-License-Identifier: MIT
import QtQuick

/// How far a table is scrolled, seen while it moves.
Rectangle {
    required property Flickable flickable

    parent: flickable
    visible: flickable.visibleArea.heightRatio < 1
    anchors.right: parent.right
    anchors.rightMargin: 3
    y: 3 + flickable.visibleArea.yPosition * (parent.height - 6)
    width: 3
    height: Math.max(24, flickable.visibleArea.heightRatio * (parent.height - 6))
    radius: 1.5
    color: Theme.scrollThumb
    opacity: flickable.moving || flickable.flicking ? 1 : 0
    Behavior on opacity { NumberAnimation { duration: Theme.fadeTime } }
    Accessible.ignored: true
}
