// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// What every row has: its ground, the line below it, the answer to touches and keys. Rows of each kind build on it.
Item {
    id: row

    required property int index
    required property int lineId
    required property string text
    required property bool usable
    required property bool starts
    required property bool last
    required property real inset
    required property real accessoryWidth
    required property real rowHeight
    required property bool animated
    /// Whether the page that it leads to is open beside it.
    required property bool isOpen
    required property bool isChanged
    required property Item table

    /// Where the label begins, and how high the row has to be for it.
    property real labelInset: inset
    property real labelHeight: 0
    /// Whether the label is cut off.
    property bool labelIsCut: false

    /// What a touch, Enter or Space does.
    signal activated

    /// What is touched now is no tap.
    function leaveTouch() { touch.strayed = true }

    readonly property bool isCurrent: table.activeFocus && ListView.isCurrentItem
    readonly property bool pressed: touch.pressed && !touch.strayed

    x: table.inset
    width: table.cellWidth
    height: Math.max(rowHeight, labelHeight)
    enabled: usable

    Component.onDestruction: row.table.model.lineLeft(row.lineId)

    CardPart {
        starts: row.starts
        last: row.last
        color: row.isOpen ? Theme.rowPressed : pointer.hovered ? Theme.rowPointed : Theme.row
    }
    Pointer {
        id: pointer
        tip: row.labelIsCut ? row.text : ""
    }
    CardPart {
        starts: row.starts
        last: row.last
        color: Theme.rowPressed
        opacity: row.pressed ? 1 : 0
        visible: opacity > 0
        Behavior on opacity {
            enabled: !row.pressed
            NumberAnimation { duration: Theme.fadeTime }
        }
    }

    Rectangle {
        visible: row.isOpen
        x: 5
        y: 8
        width: 3
        height: parent.height - 2 * y
        radius: 1.5
        color: Theme.tint
    }

    // Within the row: what lies above it may be drawn after it.
    Hairline {
        visible: row.starts && !Theme.cards
        width: parent.width
    }
    Hairline {
        visible: !row.last
        anchors.bottom: parent.bottom
        x: row.labelInset
        width: parent.width - x
    }

    ChangedMark {
        visible: row.isChanged
        color: row.usable ? Theme.tint : Theme.greyed
    }

    TapArea {
        id: touch
        anchors.fill: parent
        onPressed: {
            row.table.currentIndex = row.index
            row.table.forceActiveFocus()
        }
        onTapped: row.activated()
    }

    FocusFrame {
        anchors.margins: 2
        active: row.isCurrent
        z: 1
    }
}
