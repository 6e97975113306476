// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A row's icon, at its own size.
Picture {
    required property TableRow row

    x: Theme.margin
    anchors.verticalCenter: parent.verticalCenter
    width: implicitWidth
    height: implicitHeight
    opacity: row.usable ? 1 : 0.5
}
