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

    function mix(from, to, part) {
        return Qt.rgba(from.r + (to.r - from.r) * part, from.g + (to.g - from.g) * part,
                       from.b + (to.b - from.b) * part, 1)
    }

    // What is off is an outline alone: greyed, it would shine through whatever lay on it.
    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: control.position > 0 ? border.color : Theme.switchOff
        border.color: control.mix(Theme.switchOutline, Theme.switchOn, control.position)
        border.width: Theme.outline
    }
    // The hole of a switch that is off shuts as it goes on.
    Rectangle {
        anchors.centerIn: parent
        width: (parent.width - 2 * Theme.outline) * (1 - control.position)
        height: (parent.height - 2 * Theme.outline) * (1 - control.position)
        radius: height / 2
        color: Theme.switchOff
        visible: control.position > 0 && control.position < 1
    }

    // The knob grows as the switch goes on, and then has a shadow.
    Item {
        readonly property real size: 22 + 6 * control.position
        x: 1.5 + control.position * (control.width - control.height) + (28 - size) / 2
        anchors.verticalCenter: parent.verticalCenter
        width: size
        height: size
        Repeater {
            model: 3
            Rectangle {
                required property int index
                x: -0.5
                y: 1 + index
                width: parent.width + 1
                height: width
                radius: width / 2
                color: "#0d000000"
                opacity: control.position
            }
        }
        Rectangle {
            anchors.fill: parent
            radius: width / 2
            color: control.mix(Theme.knobOff, Theme.knobOn, control.position)
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
