// SPDX-License-Identifier: MIT
import QtQuick

/// Tells the user something, and waits until it has been read.
FocusScope {
    id: box

    required property string text
    signal read

    focus: true
    Component.onCompleted: ok.forceActiveFocus()
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    Rectangle {
        anchors.fill: parent
        color: Theme.scrim
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            hoverEnabled: true
            onWheel: (wheel) => wheel.accepted = true
        }
    }
    Rectangle {
        anchors.centerIn: parent
        width: 270
        height: Math.ceil(words.implicitHeight) + 40 + Theme.barHeight
        radius: 10
        color: Theme.card

        Text {
            id: words
            x: 18
            y: 20
            width: parent.width - 36
            text: box.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Theme.headerSize
            color: Theme.text
            Accessible.ignored: true
        }
        Hairline {
            anchors.bottom: ok.top
            width: parent.width
        }
        BarButton {
            id: ok
            anchors.bottom: parent.bottom
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("OK")
            bold: true
            onActivated: box.read()
        }
    }
    Shortcut {
        sequences: ["Escape"]
        onActivated: box.read()
    }
}
