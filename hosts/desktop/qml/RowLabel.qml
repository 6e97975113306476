// SPDX-License-Identifier: MIT
import QtQuick

/// A row's label, greyed with its row. It ends where the accessory begins, and the row grows with the
/// lines that it needs; only a label without measure is cut.
Text {
    required property TableRow row

    readonly property real needed: Math.ceil(implicitHeight) + 2 * Theme.labelPadding
    onNeededChanged: row.labelHeight = needed
    onTruncatedChanged: row.labelIsCut = truncated

    x: row.labelInset
    width: row.width - x - row.accessoryWidth
    height: row.height
    text: row.text
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
    horizontalAlignment: Text.AlignLeft
    wrapMode: Text.Wrap
    maximumLineCount: 5
    elide: Text.ElideRight
    font.pixelSize: Theme.textSize
    color: row.usable ? Theme.text : Theme.greyed
    Accessible.ignored: true
    Behavior on color {
        enabled: row.animated
        ColorAnimation { duration: Theme.rowTime }
    }
}
