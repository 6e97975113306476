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

    /// Where its lines begin, and how wide they are.
    readonly property real inset: Theme.inset(width)
    readonly property real cellWidth: width - 2 * inset

    clip: true
    cacheBuffer: 0
    reuseItems: false
    boundsBehavior: Flickable.DragAndOvershootBounds
    highlightFollowsCurrentItem: false
    currentIndex: -1
    activeFocusOnTab: true

    readonly property string title: page.title
    Accessible.role: Accessible.List

    model: page.table

    header: ViewTree {
        x: list.inset
        width: list.cellWidth
        height: implicitHeight
        tree: list.page.header
        dark: Theme.dark
        textScale: Theme.textScale
        wraps: Theme.narrow
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
        Accessible.focusable: false
        Accessible.ignored: list.page.headerText === ""
    }

    delegate: DelegateChooser {
        role: "kind"
        DelegateChoice { roleValue: "header"; SectionHeader { table: list } }
        DelegateChoice { roleValue: "footer"; SectionFooter { table: list } }
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

    /// Whether the row, or that part of it, is within the first `room` points of the view, as far as it can be.
    function isInView(index, room = height, part = 1) {
        const line = index < 0 ? null : itemAtIndex(index)
        if (!line) return false
        const seen = Math.min(line.y + line.height, contentY + room) - Math.max(line.y, contentY)
        return seen + 1 >= Math.min(line.height, room) * part
    }
    /// The last row, going by the step, of those that are in view as a whole; -1 for none.
    function lastInView(step) {
        let last = -1
        for (let i = model.rowBeside(step > 0 ? -1 : count, step); i >= 0; i = model.rowBeside(i, step)) {
            if (isInView(i)) last = i
        }
        return last
    }
    /// Brings the row on the screen, and what is said about it as far as there is room: the title above it, the footer
    /// below it, and all that comes before the first row and after the last.
    function show(index) {
        contain(model.rowBeside(index, 1) < 0 ? count - 1 : index + 1)
        if (model.rowBeside(index, -1) < 0) positionViewAtBeginning()
        else contain(index - 1)
        contain(index)
    }
    // Twice: how high a line is shows only once it is there.
    function contain(index) {
        positionViewAtIndex(index, ListView.Contain)
        forceLayout()
        positionViewAtIndex(index, ListView.Contain)
    }
    /// The keys act on the row from here on, and the user knows.
    function placeFocus(index) {
        forceActiveFocus()
        moveTo(index)
        Theme.focusPlaced()
    }
    function moveTo(index) {
        if (index < 0) return
        currentIndex = index
        show(index)
    }
    function moveBy(step) {
        const from = currentIndex < 0 ? (step > 0 ? -1 : count) : currentIndex
        model.endTyping()
        const beside = model.rowBeside(from, step)
        moveTo(beside < 0 ? currentIndex : beside)
    }
    // To the last row in view or, from there, to the last that is in view once this one is the first: none is passed
    // over unseen.
    function moveByPage(step) {
        if (currentIndex < 0) return moveBy(step)
        const leadsOn = (row) => row >= 0 && (row - currentIndex) * step > 0
        if (!leadsOn(lastInView(step))) {
            positionViewAtIndex(currentIndex, step > 0 ? ListView.Beginning : ListView.End)
            forceLayout()
        }
        const last = lastInView(step)
        leadsOn(last) ? moveTo(last) : moveBy(step)
    }
    // A row that has been scrolled away is not acted upon before it is seen.
    function activate() {
        if (!isInView(currentIndex, height, 0.5)) return moveTo(currentIndex)
        if (currentItem.activated) currentItem.activated()
    }

    // What is read stays where it was, or at the top, as lines become higher or lower: the row with the keys where that
    // is in view, or else the first line that is.
    property int keptLine: -1
    onWidthChanged: {
        if (keptLine >= 0 || count === 0 || atYBeginning) return
        keptLine = activeFocus && isInView(currentIndex) ? currentIndex : indexAt(width / 2, contentY)
        Qt.callLater(keepPlace)
    }
    function keepPlace() {
        const line = keptLine
        keptLine = -1
        if (line < 0) return
        forceLayout()
        if (line === currentIndex) return show(line)
        positionViewAtIndex(line, ListView.Beginning)
        forceLayout()
        positionViewAtIndex(line, ListView.Beginning)
    }

    /// Opens the menu of the row on the line, at a place of the table; without one, below the row's label.
    function openMenu(index, place) {
        const line = itemAtIndex(index)
        if (!line || !page.table.isRow(index)) return
        if (line.leaveTouch) line.leaveTouch()
        const beneath = line.mapToItem(list, Theme.margin, line.height)
        const at = mapToItem(null, place ? place.x : beneath.x, place ? place.y : beneath.y)
        currentIndex = index
        page.openRowMenu(index, at)
    }

    // What has the focus as it comes to be shown is among what the user sees.
    Connections {
        target: Theme
        function onShowsFocusChanged() {
            if (!Theme.showsFocus || !list.activeFocus || list.isInView(list.currentIndex)) return
            const seen = list.lastInView(-1)
            if (seen >= 0) list.currentIndex = seen
        }
    }
    // A row that is seen stays seen while a banner takes its place.
    property real heightBefore: 0
    onHeightChanged: {
        if (isInView(currentIndex, heightBefore)) positionViewAtIndex(currentIndex, ListView.Contain)
        heightBefore = height
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
        case Qt.Key_Home: moveTo(model.rowBeside(-1, 1)); break
        case Qt.Key_End: moveTo(model.rowBeside(count, -1)); break
        case Qt.Key_PageUp: moveByPage(-1); break
        case Qt.Key_PageDown: moveByPage(1); break
        case Qt.Key_Menu: openMenu(currentIndex); break
        case Qt.Key_F10:
            if (event.modifiers & Qt.ShiftModifier) openMenu(currentIndex)
            else event.accepted = false
            break
        default: event.accepted = false
        }
    }

    RowMenuArea {
        parent: list
        table: list
        onWanted: (line, place) => list.openMenu(line, place)
    }
    ScrollThumb {
        flickable: list
    }
}
