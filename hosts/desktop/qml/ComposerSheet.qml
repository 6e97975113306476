// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A composer over the pages: it comes up from below, and goes back there when it is done.
FocusScope {
    id: sheet

    required property Navigation navigation
    readonly property Composer composer: navigation.composer
    // Another one may come while this one still leaves.
    onComposerChanged: {
        if (!form.item) return
        form.active = false
        form.active = true
    }
    readonly property bool isAsking: composer !== null && composer.question !== Composer.NoQuestion
    onIsAskingChanged: if (!isAsking && enabled) form.forceActiveFocus()

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
    readonly property string title: form.item ? form.item.title : ""

    Backdrop {
        color: Theme.scrim
        opacity: sheet.risen
    }

    Loader {
        id: form
        focus: true
        enabled: !sheet.isAsking
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

    Loader {
        active: sheet.isAsking
        width: parent.width
        height: parent.height
        sourceComponent: sheet.composer && sheet.composer.question === Composer.WhichFolder ? folder : drop
    }
    Component {
        id: folder
        SheetQuestion {
            title: qsTr("Where to Keep the Draft")
            text: qsTr("You have no documents folder that can take the draft of this e-mail. "
                       + "In which folder is it to be kept? It is made where it is missing.")
            yes: qsTr("Continue")
            no: qsTr("Back")
            hasField: true
            suggestion: sheet.composer ? sheet.composer.folder : ""
            problem: sheet.composer ? sheet.composer.folderProblem : ""
            onAgreed: (typed) => sheet.composer.agree(typed)
            onDeclined: sheet.composer.decline()
        }
    }
    Component {
        id: drop
        SheetQuestion {
            title: qsTr("Discard the Post?")
            text: qsTr("What you have written is kept nowhere else.")
            yes: qsTr("Discard")
            no: qsTr("Keep Writing")
            onAgreed: sheet.composer.agree()
            onDeclined: sheet.composer.decline()
        }
    }

    Shortcut {
        sequences: ["Escape"]
        // With the keyboard in a banner, the key is for that.
        enabled: sheet.activeFocus
        onActivated: sheet.isAsking ? sheet.composer.decline() : sheet.composer.cancel()
    }
}
