// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A row's icon, at its own size. Icons of applications come square, as they lie in the application.
Picture {
    required property TableRow row

    x: Theme.margin
    anchors.verticalCenter: parent.verticalCenter
    width: implicitWidth
    height: implicitHeight
    radius: Theme.iconRadius * implicitWidth / Theme.iconSize
    opacity: row.usable ? 1 : 0.5
}
