// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A composer over the pages: it comes up from below, and goes back there when it is done.
FocusScope {
    id: sheet

    required property Navigation navigation
    readonly property Composer composer: navigation.composer

    // From 0, below the window, to 1, in place.
    property real risen: 0
    Behavior on risen {
        enabled: sheet.navigation.composerAnimated && Theme.pushTime > 0
        NumberAnimation {
            duration: Theme.pushTime
            easing.type: Easing.OutCubic
        }
    }
    Component.onCompleted: {
        risen = Qt.binding(() => navigation.composerShown ? 1 : 0)
        forceActiveFocus()
    }
    onRisenChanged: if (risen === 0 && !navigation.composerShown) navigation.composerLeft()

    focus: true
    enabled: navigation.composerShown

    Accessible.role: Accessible.Dialog
    Accessible.name: form.item ? form.item.title : ""

    Rectangle {
        anchors.fill: parent
        color: Theme.scrim
        opacity: sheet.risen
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            hoverEnabled: true
            onWheel: (wheel) => wheel.accepted = true
        }
    }

    Loader {
        id: form
        focus: true
        width: parent.width
        height: parent.height
        y: (1 - sheet.risen) * parent.height
        sourceComponent: !sheet.composer ? null : sheet.composer.kind === "mail" ? mail : post
        onLoaded: item.forceActiveFocus()
    }
    Component {
        id: mail
        MailForm { composer: sheet.composer }
    }
    Component {
        id: post
        PostForm { composer: sheet.composer }
    }

    Shortcut {
        sequences: ["Escape"]
        // With the keyboard in a banner, the key is for that.
        enabled: sheet.activeFocus
        onActivated: sheet.composer.cancel()
    }
}
