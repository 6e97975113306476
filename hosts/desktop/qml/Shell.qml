// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// The window's content: the stack of pages under one bar, and what is presented over them.
FocusScope {
    id: shell

    required property Navigation navigation
    /// How wide the screen is that the pages are made for.
    required property real phoneWidth
    property bool dark: false
    property bool highContrast: false
    property color accent: "transparent"
    property real textScale: 1
    property bool reducedMotion: false
    /// Whether the user knows where the focus is. Until then a key acts on nothing but shows it.
    property bool showsFocus: false
    /// Of a frame that goes with the window.
    readonly property color frameColor: Theme.bar
    readonly property color frameTextColor: Theme.text

    focus: true

    readonly property string title: ""
    Accessible.role: Accessible.Pane

    Binding { target: Theme; property: "dark"; value: shell.dark }
    Binding { target: Theme; property: "highContrast"; value: shell.highContrast }
    Binding { target: Theme; property: "accent"; value: shell.accent }
    Binding { target: Theme; property: "textScale"; value: shell.textScale }
    Binding { target: Theme; property: "reducedMotion"; value: shell.reducedMotion }
    Binding { target: Theme; property: "showsFocus"; value: shell.showsFocus }
    Binding { target: Theme; property: "hairline"; value: 1 / Screen.devicePixelRatio }
    Binding { target: Theme; property: "cards"; value: shell.cards }
    Binding { target: Theme; property: "narrow"; value: shell.width < shell.phoneWidth }

    // Never so early that rows became narrower than they are on the phone, but for its being wider than any card.
    readonly property bool cards: width >= Math.min(phoneWidth, Theme.cardWidth) + 2 * Theme.cardGap

    /// How far from the left the bar with the menu's button ends.
    readonly property real menuSide: navigation.sideBySide && navigation.current === navigation.first
                                     ? Theme.firstColumn : width

    /// What a banner leaves: it lies over nothing, and the rows above it stay in their places as it comes and goes.
    readonly property real roomHeight: height - banner.height
    Connections {
        target: Theme
        function onFocusPlaced() { shell.showsFocus = true }
    }

    readonly property bool sideBySide: width >= Theme.columnsFrom
    readonly property size firstSize: roomIn(sideBySide ? Theme.firstColumn : width)
    readonly property size otherSize: roomIn(sideBySide ? width - Theme.firstColumn : width)
    onFirstSizeChanged: navigation.layOut(firstSize, otherSize, sideBySide)
    onOtherSizeChanged: navigation.layOut(firstSize, otherSize, sideBySide)
    function roomIn(column) {
        return Qt.size(column - 2 * Theme.inset(column), height - Theme.barHeight)
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.page
    }
    Rectangle {
        width: parent.width
        height: Theme.barHeight
        color: Theme.bar
    }

    FocusScope {
        id: pages
        width: parent.width
        height: shell.roomHeight
        focus: true
        enabled: !shell.navigation.composerShown && !shell.overlaid

        Text {
            visible: shell.navigation.sideBySide && shell.navigation.current === shell.navigation.first
            x: Theme.firstColumn + Theme.margin
            y: Theme.barHeight
            width: parent.width - x - Theme.margin
            height: parent.height - y
            text: qsTr("Choose a page on the left, and it opens here.")
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.Wrap
            font.pixelSize: Theme.textSize
            color: Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Repeater {
            model: shell.navigation
            PageItem { navigation: shell.navigation }
        }
        Rectangle {
            visible: shell.navigation.sideBySide
            x: Theme.firstColumn - width
            z: 2
            width: Theme.hairline
            height: parent.height
            color: Theme.barLine
        }
    }
    Hairline {
        y: Theme.barHeight - height
        width: parent.width
        color: Theme.barLine
    }

    // None of them is needed, nor loaded, before somebody asks for it.
    Loader {
        id: overlay
        width: parent.width
        height: shell.roomHeight
        // Phones over what is looked for: they can be asked for from there.
        readonly property url wanted: shell.navigation.phones.open ? "PhonesSheet.qml"
                                      : shell.navigation.find.open ? "FindSheet.qml"
                                      : shell.navigation.commands.sheet === Commands.KeysSheet ? "KeysSheet.qml"
                                      : shell.navigation.commands.sheet === Commands.AboutSheet ? "AboutSheet.qml" : ""
        onWantedChanged: {
            const hadKeys = activeFocus
            if (wanted == "") source = ""
            else if (shell.navigation.phones.open) setSource(wanted, { phones: shell.navigation.phones })
            else if (shell.navigation.find.open) setSource(wanted, { find: shell.navigation.find })
            else setSource(wanted, { commands: shell.navigation.commands })
            if (item) item.forceActiveFocus()
            else if (hadKeys) pages.forceActiveFocus()
        }
    }
    Loader {
        id: menu
        width: parent.width
        height: shell.roomHeight
        readonly property bool wanted: shell.navigation.menu.open
        onWantedChanged: {
            if (wanted) return setSource("PopupMenu.qml", { menu: shell.navigation.menu })
            source = ""
            shell.giveBack()
        }
        Connections {
            target: shell.navigation
            function onMenuAsked() { shell.navigation.openMenu(Qt.point(shell.menuSide, Theme.barHeight)) }
        }
    }
    Loader {
        id: composer
        width: parent.width
        height: shell.roomHeight
        readonly property bool wanted: shell.navigation.composer !== null
        onWantedChanged: {
            if (wanted) return setSource("ComposerSheet.qml", { navigation: shell.navigation })
            source = ""
        }
        // As soon as it is on its way out: keys are for the pages from then on.
        Connections {
            target: shell.navigation
            function onComposerShownChanged() { if (!shell.navigation.composerShown) Qt.callLater(shell.giveBack) }
        }
    }
    Loader {
        id: banner
        anchors.bottom: parent.bottom
        width: parent.width
        height: item ? item.implicitHeight : 0
        readonly property bool wanted: shell.navigation.banners.shown
        onWantedChanged: {
            if (wanted) return setSource("Banner.qml", { banners: shell.navigation.banners })
            if (activeFocus) shell.giveBack()
            source = ""
        }
        Binding {
            target: banner.item
            property: "mostHeight"
            value: Math.max(shell.height / 2, 110)
        }
        Connections {
            target: banner.item
            function onDone() { shell.giveBack() }
        }
    }

    /// The keyboard is the composer's or the pages' again.
    function giveBack() {
        if (navigation.composerShown) composer.item.forceActiveFocus()
        else if (menu.item) menu.item.forceActiveFocus()
        else if (overlay.item) overlay.item.forceActiveFocus()
        else pages.forceActiveFocus()
    }

    /// Whether what the user looks for, or the page of phones, lies over the pages.
    readonly property bool overlaid: navigation.find.open || navigation.phones.open || navigation.menu.open
                                     || navigation.commands.sheet !== Commands.NoSheet
    /// Whether nothing lies over the pages.
    readonly property bool onPages: pages.enabled
    readonly property TableModel table: navigation.current ? navigation.current.table : null

    // What no row and no button has taken: the name of an application where the page lists some, else something to find.
    Keys.onPressed: (event) => {
        if (!onPages) return
        const typed = table ? table.typed : ""
        event.accepted = true
        if (event.key === Qt.Key_Backspace && typed !== "") navigation.current.type(typed.slice(0, -1))
        else if (event.key === Qt.Key_Left && navigation.sideBySide) takeKeys(navigation.first)
        else if (event.key === Qt.Key_Right && navigation.sideBySide) takeKeys(navigation.current)
        else if (!Typing.isText(event)) event.accepted = false
        else if (table && table.listsApplications()) navigation.current.type(typed + event.text)
        else navigation.find.begin(event.text)
    }

    function takeKeys(page) {
        page.takeKeys()
        Theme.focusPlaced()
    }

    // The first picture is what the user waits for.
    Loader {
        id: keys
        active: false
        source: "CommandKeys.qml"
        onLoaded: {
            item.navigation = shell.navigation
            item.onPages = Qt.binding(() => shell.onPages)
        }
        Connections {
            target: shell.Window.window
            enabled: !keys.active
            function onFrameSwapped() { keys.active = true }
        }
    }
    Shortcut {
        sequences: ["Escape", "Alt+Left", "Back"]
        enabled: shell.onPages && !banner.activeFocus
        onActivated: {
            if (shell.table && shell.table.typed !== "") shell.table.endTyping()
            else shell.navigation.back()
        }
    }
    // The mouse's own way back.
    MouseArea {
        anchors.fill: parent
        z: 10
        acceptedButtons: Qt.BackButton
        onClicked: {
            if (shell.navigation.menu.open) shell.navigation.menu.close()
            else if (shell.navigation.commands.sheet !== Commands.NoSheet) shell.navigation.commands.closeSheet()
            else if (shell.navigation.phones.open) shell.navigation.phones.close()
            else if (shell.navigation.find.open) shell.navigation.find.close()
            else shell.navigation.back()
        }
    }

    // In front of what scrolls by it.
    Item {
        anchors.fill: parent
        z: 10
        WheelHandler {
            acceptedModifiers: Qt.ControlModifier
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            property real turned: 0
            readonly property int oneStep: 120
            onWheel: (event) => {
                turned += event.angleDelta.y
                if (Math.abs(turned) < oneStep) return
                shell.navigation.commands.run(turned > 0 ? Commands.LargerText : Commands.SmallerText)
                turned = 0
            }
        }
    }

    Loader {
        anchors.fill: parent
        z: 11
        active: Tips.over !== null
        sourceComponent: Item {
            ToolTip {
                over: Tips.over
                text: Tips.text
            }
        }
    }

    // A folder that is let go over the window is a phone to open.
    DropArea {
        id: drop
        anchors.fill: parent
        enabled: !shell.navigation.composerShown
        keys: ["text/uri-list"]
        onDropped: (dropped) => {
            dropped.accept(Qt.CopyAction)
            shell.navigation.phones.openAddresses(dropped.urls)
        }
        Rectangle {
            anchors.fill: parent
            visible: drop.containsDrag
            color: Theme.scrim
            Rectangle {
                anchors.centerIn: parent
                width: Math.min(parent.width - 2 * Theme.margin, promise.implicitWidth + 2 * Theme.margin)
                height: promise.height + 2 * Theme.margin
                radius: 12
                color: Theme.card
                Text {
                    id: promise
                    anchors.centerIn: parent
                    width: Math.min(implicitWidth, parent.width - 2 * Theme.margin)
                    text: qsTr("Open as a phone")
                    textFormat: Text.PlainText
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.titleSize
                    color: Theme.text
                    Accessible.ignored: true
                }
            }
        }
    }
}
