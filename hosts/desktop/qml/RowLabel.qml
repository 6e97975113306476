// SPDX-License-Identifier: MIT
import QtQuick

/// A row's label, greyed with its row. It ends where the accessory begins.
Text {
    required property TableRow row

    x: row.inset
    width: row.width - x - row.accessoryWidth
    height: row.height
    text: row.text
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
    elide: Text.ElideRight
    font.pixelSize: Theme.textSize
    color: row.usable ? Theme.text : Theme.greyed
    Accessible.ignored: true
    Behavior on color {
        enabled: row.animated
        ColorAnimation { duration: Theme.rowTime }
    }
}
