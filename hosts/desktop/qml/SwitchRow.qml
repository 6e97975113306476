// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A row with a switch. Only the switch itself answers to a finger; Space and Enter move it too.
TableRow {
    id: row

    required property var picture
    required property bool isOn

    answersTouch: false
    onActivated: move(!isOn)

    function move(on) {
        if (row.usable) row.table.model.moveSwitch(row.index, on)
    }

    RowPicture {
        row: row
        picture: row.picture
    }
    RowLabel { row: row }
    SwitchControl {
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        usable: row.usable
        on: row.isOn
        onMoved: (on) => {
            row.table.currentIndex = row.index
            row.table.forceActiveFocus()
            row.move(on)
        }
    }
}
