// SPDX-License-Identifier: MIT
import QtQuick

/// Keys, and what they do.
Item {
    id: row

    required property string keys
    required property string meaning
    property alias starts: ground.starts
    property alias last: ground.last

    visible: meaning !== ""
    height: visible ? words.height + 2 * Theme.labelPadding : 0

    Accessible.role: Accessible.StaticText
    Accessible.name: keys + ": " + meaning
    Accessible.focusable: false

    CardPart { id: ground }
    Column {
        id: words
        x: Theme.margin
        y: Theme.labelPadding
        width: parent.width - 2 * x
        spacing: 2
        Text {
            width: parent.width
            text: row.meaning
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            wrapMode: Text.Wrap
            font.pixelSize: Theme.textSize
            color: Theme.text
            Accessible.ignored: true
        }
        Text {
            width: parent.width
            text: row.keys
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            wrapMode: Text.Wrap
            font.pixelSize: Theme.headerSize
            color: Theme.secondary
            Accessible.ignored: true
        }
    }
    Hairline {
        visible: !row.last
        anchors.bottom: parent.bottom
        x: Theme.margin
        width: parent.width - x
    }
}
