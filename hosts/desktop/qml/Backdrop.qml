// SPDX-License-Identifier: MIT
import QtQuick

/// What lies behind a sheet: nothing goes through it to the pages beneath.
Rectangle {
    anchors.fill: parent
    color: Theme.page
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: (wheel) => wheel.accepted = true
    }
}
