// SPDX-License-Identifier: MIT
import QtQuick

/// Stands where an item's icon would, so that names line up.
Rectangle {
    x: Theme.margin
    anchors.verticalCenter: parent.verticalCenter
    width: Theme.iconSize
    height: Theme.iconSize
    radius: Theme.iconRadius
    color: Theme.placeholder
    border.color: Theme.placeholderMark
    border.width: Theme.hairline

    Grid {
        anchors.centerIn: parent
        columns: 2
        spacing: 3
        Repeater {
            model: 4
            Rectangle {
                width: 6
                height: 6
                radius: 2
                color: Theme.placeholderMark
            }
        }
    }
}
