// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A row with a switch, which a touch of the row moves, and so do Space and Enter. To the page it is the switch alone
/// that has been used: the row is not selected.
TableRow {
    id: row

    required property var picture
    required property bool isOn

    onActivated: move(!isOn)

    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onToggleAction: move(!isOn)

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
