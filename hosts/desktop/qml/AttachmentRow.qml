// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A file that goes with an e-mail.
Item {
    id: attachment

    /// Whether the card that it stands in ends with it.
    property bool last: false
    property string name: ""
    property string note: ""

    width: parent ? parent.width : 0
    height: Math.max(60, label.height + details.height + 22)

    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("Attachment %1, %2").arg(name).arg(note)
    Accessible.focusable: false

    Glyph {
        x: Theme.margin + 4
        anchors.verticalCenter: parent.verticalCenter
        width: 13
        height: 28
        shape: Glyph.Paperclip
        stroke: 1.75
        color: Theme.tint
    }
    Text {
        id: label
        x: Theme.margin + 32
        y: 11
        width: parent.width - x - Theme.margin
        text: attachment.name
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideMiddle
        font.pixelSize: Theme.textSize
        color: Theme.text
        Accessible.ignored: true
    }
    Text {
        id: details
        x: Theme.margin + 32
        y: Math.max(33, label.y + label.height)
        width: parent.width - x - Theme.margin
        text: attachment.note
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        font.pixelSize: Theme.smallSize
        color: Theme.secondary
        Accessible.ignored: true
    }
    Hairline {
        visible: !(Theme.cards && attachment.last)
        anchors.bottom: parent.bottom
        x: Theme.margin
        width: parent.width - x
    }
}
