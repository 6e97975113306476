// SPDX-License-Identifier: MIT
import QtQuick

/// Before the label of a row that is not at its default: a dot where other rows have nothing.
Rectangle {
    // Clear of the frame that the focus draws.
    x: Theme.margin - width - 3
    anchors.verticalCenter: parent.verticalCenter
    width: Theme.highContrast ? 7 : 6
    height: width
    radius: width / 2
    color: Theme.tint
}
