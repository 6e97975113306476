// SPDX-License-Identifier: MIT
import QtQuick

/// The switch alone. It shows what it is told and reports where the user moves it.
Item {
    id: control

    property bool on: false
    property bool usable: true
    signal moved(bool on)

    width: Theme.switchWidth
    height: Theme.switchHeight
    opacity: usable ? 1 : 0.5
    Behavior on opacity { NumberAnimation { duration: Theme.fadeTime } }

    // From 0, off, to 1, on.
    property real position: on ? 1 : 0
    Behavior on position {
        NumberAnimation {
            duration: Theme.switchTime
            easing.type: Easing.OutCubic
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: mix(Theme.switchOff, Theme.switchOn, control.position)
        function mix(from, to, part) {
            return Qt.rgba(from.r + (to.r - from.r) * part, from.g + (to.g - from.g) * part,
                           from.b + (to.b - from.b) * part, 1)
        }
    }
    // The hole of a switch that is off shuts as it goes on.
    Rectangle {
        anchors.centerIn: parent
        width: (parent.width - 3) * (1 - control.position)
        height: (parent.height - 3) * (1 - control.position)
        radius: height / 2
        color: Theme.switchHole
        visible: control.position < 1
    }

    Item {
        x: 1.5 + control.position * (control.width - control.height)
        y: 1.5
        width: 28
        height: 28
        Repeater {
            model: 3
            Rectangle {
                required property int index
                x: -0.5
                y: 1 + index
                width: 29
                height: 29
                radius: 14.5
                color: "#0d000000"
            }
        }
        Rectangle {
            anchors.fill: parent
            radius: 14
            color: "#ffffff"
            border.color: Theme.knobEdge
            border.width: 0.5
        }
    }

    MouseArea {
        anchors.fill: parent
        anchors.margins: -7
        enabled: control.usable
        preventStealing: true
        onClicked: control.moved(!control.on)
    }
}
