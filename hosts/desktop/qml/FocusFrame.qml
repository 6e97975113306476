// SPDX-License-Identifier: MIT
import QtQuick

/// Shows where the keyboard's focus is. The item that holds it says when that is here.
Rectangle {
    property bool active: false

    anchors.fill: parent
    visible: active && Theme.showsFocus
    color: "transparent"
    border.color: Theme.focus
    border.width: 2.5
    radius: 6
}
