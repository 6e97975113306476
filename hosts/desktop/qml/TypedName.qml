// SPDX-License-Identifier: MIT
import QtQuick

/// What has been typed of an application's name, over the page that lists it.
Rectangle {
    property string text: ""
    property bool isVain: false

    visible: text !== ""
    width: Math.min(parent.width - 2 * Theme.margin, words.implicitWidth + 32)
    height: words.implicitHeight + 16
    radius: height / 2
    color: Theme.card
    border.width: Theme.outline
    border.color: isVain ? Theme.danger : Theme.tint
    Accessible.role: Accessible.StaticText
    Accessible.name: words.text
    Accessible.focusable: false

    Text {
        id: words
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 32)
        text: parent.isVain ? qsTr("%1: no such application").arg(parent.text) : parent.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideLeft
        font.pixelSize: Theme.textSize
        color: Theme.text
        Accessible.ignored: true
    }
}
