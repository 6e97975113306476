// SPDX-License-Identifier: MIT
import QtQuick

/// One line of an e-mail's head.
Item {
    id: field

    /// Whether the card that it stands in ends with it.
    property bool last: false
    property string label: ""
    property string value: ""

    width: parent ? parent.width : 0
    height: Math.max(Theme.barHeight, Math.ceil(words.implicitHeight) + 24)

    Accessible.role: Accessible.StaticText
    Accessible.name: label + " " + value
    Accessible.focusable: false

    Text {
        id: caption
        x: Theme.margin
        y: words.y
        text: field.label
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: Theme.textSize
        color: Theme.secondary
        Accessible.ignored: true
    }
    Text {
        id: words
        x: caption.x + caption.width + 6
        y: 12
        width: parent.width - x - Theme.margin
        text: field.value
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        font.pixelSize: Theme.textSize
        color: Theme.text
        Accessible.ignored: true
    }
    Hairline {
        visible: !(Theme.cards && field.last)
        anchors.bottom: parent.bottom
        x: Theme.margin
        width: parent.width - x
    }
}
