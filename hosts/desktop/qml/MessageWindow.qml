// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A window with something to read and one thing to do, for a program that has no other to say it in.
FocusScope {
    id: message

    required property string text
    required property string action
    property bool dark: false
    signal closed

    readonly property string title: qsTr("Trivel 3")
    Accessible.role: Accessible.Dialog

    implicitWidth: 420
    implicitHeight: words.implicitHeight + Theme.barHeight + 3 * Theme.margin
    focus: true

    Binding { target: Theme; property: "dark"; value: message.dark }

    Rectangle {
        anchors.fill: parent
        color: Theme.page
    }
    Flickable {
        anchors.fill: parent
        anchors.margins: Theme.margin
        anchors.bottomMargin: Theme.barHeight + Theme.margin
        contentHeight: words.implicitHeight
        clip: true
        Text {
            id: words
            width: message.width - 2 * Theme.margin
            text: message.text
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            wrapMode: Text.Wrap
            font.pixelSize: Theme.textSize
            color: Theme.text
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
    }
    BarButton {
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.margin / 2
        text: message.action
        bold: true
        focus: true
        onActivated: message.closed()
    }
    Shortcut {
        sequences: ["Escape", StandardKey.Close, StandardKey.Quit]
        onActivated: message.closed()
    }
}
