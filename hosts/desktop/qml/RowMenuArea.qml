// SPDX-License-Identifier: MIT
import QtQuick

/// Over a table: what opens the menu of one of its rows, by mouse and by finger. All else goes through to the rows.
Item {
    id: area

    required property ListView table
    /// The menu of the row on this line is wanted, at this place of the table.
    signal wanted(int line, point place)

    anchors.fill: table

    function want(place) {
        const line = table.indexAt(table.width / 2, place.y + table.contentY)
        if (line >= 0) wanted(line, place)
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        // Once it is let go: a press that disables what it is on would never end.
        onClicked: (mouse) => area.want(Qt.point(mouse.x, mouse.y))
    }
    TapHandler {
        acceptedDevices: PointerDevice.TouchScreen
        onLongPressed: area.want(point.position)
    }
}
