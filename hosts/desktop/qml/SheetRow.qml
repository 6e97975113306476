// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A row of what lies over the pages: what it leads to, and a line about it.
FocusScope {
    id: row

    property string text: ""
    property string detail: ""
    /// Whether it is the one of its fellows that holds now.
    property bool marked: false
    property bool leads: false
    /// Whether the card that it stands in begins and ends with it.
    property bool starts: true
    property bool last: true
    /// Whether Enter opens it from where the keyboard is now.
    property bool willOpen: false
    /// Whether what is typed here, Space included, is for another item.
    property bool isForTyping: false
    signal activated
    signal typed(string text)
    /// The keyboard is to go on, down or up.
    signal stepped(int step)
    /// It has the keyboard now, and is to be seen.
    signal reached(var row)

    height: words.height + 2 * Theme.labelPadding
    activeFocusOnTab: true
    onActiveFocusChanged: if (activeFocus) reached(row)

    Accessible.role: Accessible.Button
    Accessible.name: text + ", " + detail
    Accessible.checked: marked
    function accessiblePressAction() { activated() }
    function accessibleSetFocusAction() {
        forceActiveFocus()
        Theme.focusPlaced()
    }

    Keys.onReturnPressed: activated()
    Keys.onEnterPressed: activated()
    Keys.onUpPressed: stepped(-1)
    Keys.onDownPressed: stepped(1)
    Keys.onSpacePressed: isForTyping ? typed(" ") : activated()
    Keys.onPressed: (event) => {
        if (!isForTyping || !Typing.isText(event)) return
        event.accepted = true
        typed(event.text)
    }

    CardPart {
        starts: row.starts
        last: row.last
        color: touch.pressed && !touch.strayed || row.willOpen ? Theme.rowPressed
               : pointer.hovered ? Theme.rowPointed : Theme.row
    }
    Pointer {
        id: pointer
        tip: title.truncated || about.truncated ? row.text + "\n" + row.detail : ""
    }
    Column {
        id: words
        x: Theme.margin
        y: Theme.labelPadding
        width: parent.width - 2 * x - Theme.checkmarkWidth - 8
        spacing: 2
        Text {
            id: title
            width: parent.width
            text: row.text
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            wrapMode: Text.Wrap
            font.pixelSize: Theme.textSize
            color: Theme.text
            Accessible.ignored: true
        }
        Text {
            id: about
            width: parent.width
            text: row.detail
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            wrapMode: Text.Wrap
            maximumLineCount: 5
            elide: Text.ElideRight
            font.pixelSize: Theme.smallSize
            color: Theme.secondary
            Accessible.ignored: true
        }
    }
    DisclosureMark { visible: row.leads }
    Glyph {
        visible: row.marked
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.checkmarkWidth
        height: Theme.checkmarkHeight
        shape: Glyph.Checkmark
        stroke: 2
        color: Theme.tint
    }
    Hairline {
        visible: !(Theme.cards && row.last)
        anchors.bottom: parent.bottom
        x: Theme.margin
        width: parent.width - x
    }
    TapArea {
        id: touch
        anchors.fill: parent
        onTapped: row.activated()
    }
    FocusFrame {
        anchors.margins: 2
        active: row.activeFocus
    }
}
