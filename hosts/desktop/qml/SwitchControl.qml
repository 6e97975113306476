// SPDX-License-Identifier: MIT
import QtQuick

/// The switch alone. It shows what it is told and reports where the user moves it, by a touch or by dragging its knob.
Item {
    id: control

    property bool on: false
    property bool usable: true
    signal moved(bool on)

    width: Theme.switchWidth
    height: Theme.switchHeight
    opacity: usable ? 1 : 0.5
    Behavior on opacity { NumberAnimation { duration: Theme.fadeTime } }

    readonly property real travel: width - height
    // From 0, off, to 1, on.
    property real position: touch.drags ? touch.draggedTo : on ? 1 : 0
    Behavior on position {
        enabled: !touch.drags
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
        x: 1.5 + control.position * control.travel + (28 - size) / 2
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

    TapArea {
        id: touch
        anchors.fill: parent
        anchors.margins: -7
        enabled: control.usable
        // Sideways the knob follows; up and down is for what the switch stands on.
        preventStealing: drags
        property bool drags: false
        property real draggedTo: 0

        onPressed: drags = false
        onPositionChanged: (mouse) => {
            const way = mouse.x - from.x
            if (Math.abs(way) >= drag.threshold) drags = true
            draggedTo = Math.max(0, Math.min(1, (control.on ? 1 : 0) + way / control.travel))
        }
        onReleased: {
            const end = draggedTo >= 0.5
            if (drags && end !== control.on) control.moved(end)
            drags = false
        }
        onCanceled: drags = false
        onTapped: control.moved(!control.on)
    }
}
