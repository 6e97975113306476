// SPDX-License-Identifier: MIT
import QtQuick

/// How far a table is scrolled: seen while it moves and where the mouse is near, which can drag it.
Item {
    id: bar

    required property Flickable flickable
    readonly property bool isNear: pointer.hovered || grip.pressed
    readonly property real edge: 3
    readonly property real room: height - 2 * edge

    parent: flickable
    visible: flickable.visibleArea.heightRatio < 1
    anchors.right: parent.right
    width: 12
    height: parent.height
    Accessible.ignored: true

    Pointer { id: pointer }
    Rectangle {
        id: thumb
        anchors.right: parent.right
        anchors.rightMargin: bar.edge
        y: bar.edge + bar.flickable.visibleArea.yPosition * bar.room
        width: bar.isNear ? 7 : 3
        height: Math.max(24, bar.flickable.visibleArea.heightRatio * bar.room)
        radius: width / 2
        color: Theme.scrollThumb
        opacity: bar.flickable.moving || bar.flickable.flicking || bar.isNear ? 1 : 0
        Behavior on opacity { NumberAnimation { duration: Theme.fadeTime } }
    }
    // A finger scrolls the table itself.
    MouseArea {
        id: grip
        enabled: bar.isNear
        y: thumb.y
        width: parent.width
        height: thumb.height
        preventStealing: true
        property real held: 0
        onPressed: (mouse) => held = mouse.y
        onPositionChanged: (mouse) => {
            const part = (y + mouse.y - held - bar.edge) / (bar.room - height)
            const length = bar.flickable.contentHeight - bar.flickable.height
            bar.flickable.contentY = bar.flickable.originY + Math.max(0, Math.min(1, part)) * length
        }
    }
}
