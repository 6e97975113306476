// SPDX-License-Identifier: MIT
import QtQuick

/// Something to touch in a bar: a text, or what is put into it.
FocusScope {
    id: button

    property string text: ""
    property string name: text
    property bool bold: false
    /// What lies over it all takes the keys and touches of every button, and greys none.
    property bool usable: true
    property color color: Theme.tint
    default property alias contents: holder.data
    signal activated

    implicitWidth: label.visible ? label.implicitWidth : holder.childrenRect.width
    implicitHeight: Theme.barHeight
    enabled: usable
    activeFocusOnTab: enabled
    opacity: !usable ? 0.4 : touch.pressed ? 0.3 : 1

    Accessible.role: Accessible.Button
    Accessible.name: name
    // In place of a handler of the press action, which would be told beside the one that a button has anyway.
    function accessiblePressAction() { if (enabled) activated() }
    function accessibleSetFocusAction() { if (enabled) Theme.focusPlaced() }

    Keys.onReturnPressed: activated()
    Keys.onEnterPressed: activated()
    Keys.onSpacePressed: activated()

    Rectangle {
        anchors.fill: parent
        anchors.margins: -6
        anchors.topMargin: 4
        anchors.bottomMargin: 4
        radius: 8
        color: Theme.barPointed
        visible: pointer.hovered
    }
    Pointer {
        id: pointer
        tip: button.text === "" ? button.name : label.truncated ? button.text : ""
    }
    Text {
        id: label
        visible: text !== ""
        anchors.verticalCenter: parent.verticalCenter
        text: button.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        width: Math.min(implicitWidth, button.width)
        elide: Text.ElideRight
        font.pixelSize: Theme.titleSize
        font.weight: button.bold ? Font.DemiBold : Font.Normal
        color: button.color
        Accessible.ignored: true
    }
    Item {
        id: holder
        anchors.fill: parent
    }
    MouseArea {
        id: touch
        anchors.fill: parent
        anchors.margins: -8
        onClicked: button.activated()
    }
    FocusFrame {
        anchors.margins: -5
        anchors.topMargin: 5
        anchors.bottomMargin: 5
        active: button.activeFocus
    }
}
