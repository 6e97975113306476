// SPDX-License-Identifier: MIT
import QtQuick

/// What stands above a section's rows: its title, or the gap that keeps sections apart.
Item {
    id: header

    required property Item table
    required property string text
    required property bool first

    x: table.inset
    width: table.cellWidth
    height: text === "" ? (first ? Theme.firstGap : 0) : (first ? Theme.firstTitleGap : Theme.titleGap) + Theme.textGap
                        + words
    /// On whole points, so that the lines of the rows below stay thin.
    readonly property real words: Math.ceil(title.implicitHeight)

    // Opaque: rows on the move pass below.
    Rectangle {
        anchors.fill: parent
        color: Theme.page
    }
    Text {
        id: title
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.textGap - 1
        x: Theme.margin
        width: parent.width - 2 * Theme.margin
        visible: text !== ""
        text: header.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.WordWrap
        font.pixelSize: Theme.headerSize
        font.capitalization: Font.AllUppercase
        color: Theme.secondary
        Accessible.ignored: true
    }
}
