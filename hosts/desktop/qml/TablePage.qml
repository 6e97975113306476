// SPDX-License-Identifier: MIT
import QtQuick
import Qt.labs.qmlmodels
import Trivel3.Settings

/// A page's table: its lines as they come on screen, moved by finger, wheel and keys.
ListView {
    id: list

    required property Page page

    objectName: "table"

    /// Whether items have icons here: an item without one then has a placeholder.
    property bool itemsHaveIcons: false

    clip: true
    cacheBuffer: 0
    reuseItems: false
    boundsBehavior: Flickable.DragAndOvershootBounds
    highlightFollowsCurrentItem: false
    currentIndex: -1
    activeFocusOnTab: true

    Accessible.role: Accessible.List
    Accessible.name: page.title

    model: page.table

    header: ViewTree {
        width: list.width
        height: implicitHeight
        tree: list.page.header
        dark: Theme.dark
        textScale: Theme.textScale
        ground: Theme.page
        contrast: Theme.textContrast
        // A page at its beginning stays there when the header grows with its text.
        property real heightBefore: 0
        onHeightChanged: {
            if (list.contentY <= -heightBefore) Qt.callLater(list.positionViewAtBeginning)
            heightBefore = height
        }
        Accessible.role: Accessible.StaticText
        Accessible.name: list.page.headerText
        Accessible.ignored: list.page.headerText === ""
    }

    delegate: DelegateChooser {
        role: "kind"
        DelegateChoice { roleValue: "header"; SectionHeader {} }
        DelegateChoice { roleValue: "footer"; SectionFooter {} }
        DelegateChoice { roleValue: "switch"; SwitchRow { table: list } }
        DelegateChoice { roleValue: "link"; LinkRow { table: list } }
        DelegateChoice { roleValue: "item"; ItemRow { table: list } }
        DelegateChoice { roleValue: "view"; ViewRow { table: list } }
    }

    Connections {
        target: list.page.table
        function onSettle() { list.forceLayout() }
        function onRowsInserted() { if (list.moves) motion.restart() }
        function onRowsRemoved() { if (list.moves) motion.restart() }
    }

    readonly property bool moves: page.table !== null && page.table.animating && Theme.rowTime > 0
    // Lines that slide off the screen, or onto it, are drawn on their way.
    readonly property bool inMotion: motion.running
    displayMarginEnd: inMotion ? height / 2 : 0
    Timer {
        id: motion
        interval: Theme.rowTime + 50
    }
    // Lines that go fade where they stand, and those below slide over them; lines that come slide out
    // from under the one above.
    add: Transition {
        enabled: list.moves
        ParallelAnimation {
            PropertyAction { property: "z"; value: -1 }
            NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.rowTime }
            NumberAnimation {
                property: "y"
                from: ViewTransition.destination.y - Theme.slide
                duration: Theme.rowTime
                easing.type: Easing.InOutQuad
            }
        }
    }
    remove: Transition {
        enabled: list.moves
        ParallelAnimation {
            PropertyAction { property: "z"; value: -1 }
            NumberAnimation { property: "opacity"; to: 0; duration: Theme.rowTime }
        }
    }
    displaced: Transition {
        enabled: list.moves
        ParallelAnimation {
            PropertyAction { property: "z"; value: 0 }
            NumberAnimation { property: "opacity"; to: 1; duration: Theme.rowTime }
            NumberAnimation { property: "y"; duration: Theme.rowTime; easing.type: Easing.InOutQuad }
        }
    }

    function moveTo(index) {
        if (index < 0) return
        currentIndex = index
        positionViewAtIndex(index, ListView.Contain)
    }
    function moveBy(step) {
        const from = currentIndex < 0 ? (step > 0 ? -1 : count) : currentIndex
        const beside = model.rowBeside(from, step)
        if (beside >= 0) moveTo(beside)
        // Beyond the last row there may be text to read.
        if (beside < 0 || model.rowBeside(beside, step) < 0) step > 0 ? positionViewAtEnd() : positionViewAtBeginning()
    }
    function moveByPage(direction) {
        const rows = Math.max(1, Math.floor(height / 44) - 2)
        for (let i = 0; i < rows; ++i) moveBy(direction)
    }
    function activate() {
        if (currentItem && currentItem.activated) currentItem.activated()
    }

    onActiveFocusChanged: if (activeFocus && currentIndex < 0) currentIndex = model.rowBeside(-1, 1)

    Keys.onUpPressed: moveBy(-1)
    Keys.onDownPressed: moveBy(1)
    Keys.onReturnPressed: activate()
    Keys.onEnterPressed: activate()
    Keys.onSpacePressed: activate()
    Keys.onPressed: (event) => {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Home: moveTo(model.rowBeside(-1, 1)); positionViewAtBeginning(); break
        case Qt.Key_End: moveTo(model.rowBeside(count, -1)); positionViewAtEnd(); break
        case Qt.Key_PageUp: moveByPage(-1); break
        case Qt.Key_PageDown: moveByPage(1); break
        default: event.accepted = false
        }
    }

    ScrollThumb {
        flickable: list
    }
}
