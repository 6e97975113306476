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

    width: ListView.view ? ListView.view.width : 0
    height: Math.max(rowHeight, labelHeight)
    enabled: usable

    Component.onDestruction: row.table.model.lineLeft(row.lineId)

    Rectangle {
        anchors.fill: parent
        color: pointer.hovered ? Theme.rowPointed : Theme.row
    }
    Pointer {
        id: pointer
        tip: row.labelIsCut ? row.text : ""
    }
    Rectangle {
        anchors.fill: parent
        color: Theme.rowPressed
        opacity: row.pressed ? 1 : 0
        visible: opacity > 0
        Behavior on opacity {
            enabled: !row.pressed
            NumberAnimation { duration: Theme.fadeTime }
        }
    }

    // Within the row: what lies above it may be drawn after it.
    Hairline {
        visible: row.starts
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
