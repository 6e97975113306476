// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// The window's content: the stack of pages under one bar, and what is presented over them.
FocusScope {
    id: shell

    required property Navigation navigation
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

    /// What a banner leaves: it lies over nothing, and the rows above it stay in their places as it comes and goes.
    readonly property real roomHeight: height - banner.height
    Connections {
        target: Theme
        function onFocusPlaced() { shell.showsFocus = true }
    }

    readonly property size pageSize: Qt.size(width, height - Theme.barHeight)
    onPageSizeChanged: navigation.resize(pageSize)

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
        enabled: !shell.navigation.composerShown

        Repeater {
            model: shell.navigation
            PageItem {
                anchors.fill: parent
                navigation: shell.navigation
            }
        }
    }
    Hairline {
        y: Theme.barHeight - height
        width: parent.width
        color: Theme.barLine
    }

    // Neither is needed, nor loaded, before a page asks for it.
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
        else pages.forceActiveFocus()
    }

    Shortcut {
        sequences: ["Escape", "Alt+Left", "Back"]
        enabled: !shell.navigation.composerShown && !banner.activeFocus
        onActivated: shell.navigation.back()
    }
    Shortcut {
        sequences: [StandardKey.Undo]
        enabled: !shell.navigation.composerShown
        onActivated: shell.navigation.undoAsked()
    }
    Shortcut {
        sequences: [StandardKey.Redo]
        enabled: !shell.navigation.composerShown
        onActivated: shell.navigation.redoAsked()
    }
    Shortcut {
        sequences: [StandardKey.Quit, StandardKey.Close]
        onActivated: Qt.quit()
    }

    // The mouse's own way back.
    MouseArea {
        anchors.fill: parent
        z: 10
        acceptedButtons: Qt.BackButton
        onClicked: shell.navigation.back()
    }
}
