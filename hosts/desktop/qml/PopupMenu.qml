// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// The window's menu, or a row's, over all else. The keyboard goes through what can be chosen; Enter, Space and an item's
/// letter choose; Escape, and a press beside it, close it.
FocusScope {
    id: popup

    required property Menu menu
    readonly property string title: menu.title
    property int current: -1

    focus: true
    Accessible.role: Accessible.PopupMenu
    Accessible.name: title
    Component.onCompleted: {
        forceActiveFocus()
        step(1)
    }

    function moveTo(item) {
        if (item >= 0) entries.itemAt(item).forceActiveFocus()
    }
    function step(by) {
        moveTo(menu.usableBeside(current < 0 && by < 0 ? 0 : current, by))
    }

    Keys.onUpPressed: step(-1)
    Keys.onDownPressed: step(1)
    Keys.onTabPressed: step(1)
    Keys.onBacktabPressed: step(-1)
    Keys.onReturnPressed: menu.choose(current)
    Keys.onEnterPressed: menu.choose(current)
    Keys.onSpacePressed: menu.choose(current)
    Keys.onEscapePressed: menu.close()
    Keys.onPressed: (event) => {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Home: moveTo(menu.usableBeside(-1, 1)); break
        case Qt.Key_End: moveTo(menu.usableBeside(0, -1)); break
        case Qt.Key_F10:
        case Qt.Key_Menu: menu.close(); break
        default: menu.choose(menu.itemOfLetter(event.text))
        }
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: popup.menu.close()
        onWheel: (wheel) => wheel.accepted = true
    }
    Rectangle {
        id: card
        readonly property real edge: 8
        width: Math.min(parent.width - 2 * edge, Math.max(180, entries.widest))
        height: Math.min(parent.height - 2 * edge, items.contentHeight + 2 * items.y)
        x: Math.round(Math.max(edge, Math.min(popup.menu.place.x, parent.width - width - edge)))
        y: Math.round(Math.max(edge, Math.min(popup.menu.place.y, parent.height - height - edge)))
        radius: 10
        color: Theme.card
        border.width: Theme.hairline
        border.color: Theme.barLine

        SheetRows {
            id: items
            inCards: false
            y: 6
            width: parent.width
            height: parent.height - 2 * y

            Repeater {
                id: entries
                model: popup.menu
                property real widest: 0
                onItemAdded: (index, item) => widest = Math.max(widest, item.needed)
                MenuEntry {
                    width: items.width
                    onReached: {
                        popup.current = index
                        items.reveal(this)
                    }
                    onChosen: popup.menu.choose(index)
                }
            }
        }
    }
}
