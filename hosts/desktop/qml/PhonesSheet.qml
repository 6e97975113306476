// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// The phones that a window can be opened on, with that of this window marked.
FocusScope {
    id: sheet

    required property Phones phones

    focus: true
    Accessible.role: Accessible.Dialog
    readonly property string title: qsTr("Phones")

    Component.onCompleted: takeKeys()
    function step(by) {
        content.Window.activeFocusItem.nextItemInFocusChain(by > 0).forceActiveFocus()
    }
    function takeKeys() {
        if (asking.item) asking.item.forceActiveFocus()
        else folders.forceActiveFocus()
    }

    Backdrop {}
    FocusScope {
        id: content
        anchors.fill: parent
        focus: true
        enabled: !sheet.phones.asking

        SheetTitle {
            id: bar
            title: sheet.title
            onClosed: sheet.phones.close()
        }
        SheetRows {
            id: reading
            y: bar.height
            width: parent.width
            height: parent.height - y
            roomBelow: Theme.firstGap

            SheetRow {
                id: folders
                width: reading.rowWidth
                text: qsTr("Open Folder…")
                detail: qsTr("The root of a phone's file system, or a folder that looks like one")
                last: false
                leads: true
                onActivated: sheet.phones.chooseFolder()
                onReached: (row) => reading.reveal(row)
                onStepped: (by) => sheet.step(by)
            }
            SheetRow {
                width: reading.rowWidth
                text: qsTr("Enter Address…")
                detail: qsTr("Of a phone that is reached by SSH, or the path of a folder")
                starts: false
                leads: true
                onActivated: sheet.phones.askForName()
                onReached: (row) => reading.reveal(row)
                onStepped: (by) => sheet.step(by)
            }
            Text {
                width: reading.rowWidth
                visible: text !== ""
                padding: Theme.margin
                text: sheet.phones.asking ? "" : sheet.phones.problem
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignLeft
                wrapMode: Text.Wrap
                font.pixelSize: Theme.headerSize
                color: Theme.danger
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
            Item {
                width: 1
                height: Theme.gap
            }
            Repeater {
                id: known
                model: sheet.phones
                SheetRow {
                    required property int index
                    required property string name
                    required property string folder
                    required property bool current
                    width: reading.rowWidth
                    starts: index === 0
                    last: index === known.count - 1
                    text: name
                    detail: folder
                    marked: current
                    onActivated: sheet.phones.choose(index)
                    onReached: (row) => reading.reveal(row)
                    onStepped: (by) => sheet.step(by)
                }
            }
        }
    }

    Loader {
        id: asking
        anchors.fill: parent
        active: sheet.phones.asking
        onLoaded: item.forceActiveFocus()
        sourceComponent: SheetQuestion {
            title: qsTr("Which Phone?")
            text: qsTr("The address of a phone (ssh://mobile@phone.local), or the path of the folder that is the root of its file system, or of a support report.")
            yes: qsTr("Open")
            no: qsTr("Cancel")
            hasField: true
            problem: sheet.phones.problem
            onAgreed: (typed) => sheet.phones.openNamed(typed)
            onDeclined: sheet.phones.close()
        }
    }

    Shortcut {
        sequences: ["Escape"]
        enabled: sheet.activeFocus
        onActivated: sheet.phones.close()
    }
}
