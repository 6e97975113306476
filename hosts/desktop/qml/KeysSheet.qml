// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// All that keys do.
FocusScope {
    id: sheet

    required property Commands commands
    readonly property string title: qsTr("Keyboard Shortcuts")

    focus: true
    Accessible.role: Accessible.Dialog
    Component.onCompleted: reading.forceActiveFocus()

    Backdrop {}
    SheetTitle {
        id: bar
        title: sheet.title
        onClosed: sheet.commands.closeSheet()
    }
    SheetRows {
        id: reading
        y: bar.height
        width: parent.width
        height: parent.height - y
        roomBelow: Theme.margin
        focus: true
        activeFocusOnTab: true

        function scrollBy(way) {
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + way))
        }
        Keys.onUpPressed: scrollBy(-Theme.barHeight)
        Keys.onDownPressed: scrollBy(Theme.barHeight)
        Keys.onPressed: (event) => {
            event.accepted = true
            switch (event.key) {
            case Qt.Key_PageUp: scrollBy(-height); break
            case Qt.Key_PageDown: scrollBy(height); break
            case Qt.Key_Home: scrollBy(-contentHeight); break
            case Qt.Key_End: scrollBy(contentHeight); break
            default: event.accepted = false
            }
        }

        Repeater {
            id: uses
            model: sheet.commands
            KeyRow {
                required property int index
                width: reading.rowWidth
                starts: index === 0
                last: index === uses.count - 1
            }
        }
    }
    FocusFrame {
        anchors.fill: reading
        anchors.margins: 2
        active: reading.activeFocus
    }

    Shortcut {
        sequences: ["Escape"]
        enabled: sheet.activeFocus
        onActivated: sheet.commands.closeSheet()
    }
}
