// SPDX-License-Identifier: MIT
import QtQuick

/// Below what the mouse rests on, or above it where there is no room: the whole of what is cut off there.
Rectangle {
    id: tip

    required property Item over
    property string text: ""

    readonly property real gap: 6
    readonly property real most: parent.width - 2 * gap
    readonly property point below: over.mapToItem(parent, 0, over.height)
    readonly property point above: over.mapToItem(parent, 0, 0)

    x: Math.round(Math.max(gap, Math.min(below.x, parent.width - width - gap)))
    y: Math.round(below.y + gap + height <= parent.height ? below.y + gap : Math.max(gap, above.y - gap - height))
    width: Math.min(most, Math.ceil(words.implicitWidth) + 20)
    height: words.height + 12
    radius: 6
    color: Theme.card
    border.width: Theme.hairline
    border.color: Theme.secondary

    Accessible.role: Accessible.ToolTip
    Accessible.name: text
    Accessible.focusable: false

    Text {
        id: words
        anchors.centerIn: parent
        width: Math.min(Math.ceil(implicitWidth), tip.most - 20)
        text: tip.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        font.pixelSize: Theme.headerSize
        color: Theme.text
        Accessible.ignored: true
    }
}
