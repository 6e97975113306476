// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// One of the things to choose from a menu: what it does, and the keys that do the same.
FocusScope {
    id: entry

    required property int index
    required property string label
    required property int access
    required property string keys
    required property bool usable
    readonly property real needed: Math.ceil(words.implicitWidth + (keys === "" ? 0 : shortcut.implicitWidth + 32))
                                   + 2 * Theme.margin
    /// It has the keyboard now, or the mouse is on it.
    signal reached
    signal chosen

    height: words.height + 2 * Theme.labelPadding
    enabled: usable
    onActiveFocusChanged: if (activeFocus) reached()

    Accessible.role: Accessible.MenuItem
    function takeFocus() {
        forceActiveFocus()
        Theme.focusPlaced()
    }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        radius: 6
        color: Theme.rowPressed
        visible: entry.activeFocus
    }
    Text {
        id: words
        x: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(Math.ceil(implicitWidth), parent.width - 2 * x)
        // The letter is for those who use the keyboard.
        text: entry.access < 0 || !Theme.showsFocus ? entry.label
              : entry.label.slice(0, entry.access) + "<u>" + entry.label.charAt(entry.access) + "</u>"
                + entry.label.slice(entry.access + 1)
        textFormat: Text.StyledText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        font.pixelSize: Theme.textSize
        color: entry.usable ? Theme.text : Theme.greyed
        Accessible.ignored: true
    }
    Text {
        id: shortcut
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        // Where there is no room for both, the keys are to be found among all keys.
        visible: words.x + words.width + 8 <= x
        text: entry.keys
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: Theme.headerSize
        color: entry.usable ? Theme.secondary : Theme.greyed
        Accessible.ignored: true
    }
    FocusFrame {
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        active: entry.activeFocus
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onPositionChanged: entry.forceActiveFocus()
        onClicked: entry.chosen()
    }
}
