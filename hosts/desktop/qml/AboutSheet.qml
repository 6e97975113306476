// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// What the program is called, which version it is, and how it may be used.
FocusScope {
    id: sheet

    required property Commands commands
    readonly property string title: qsTr("About")

    focus: true
    Accessible.role: Accessible.Dialog
    Component.onCompleted: bar.forceActiveFocus()

    Backdrop {}
    SheetRows {
        id: reading
        y: bar.height
        width: parent.width
        height: parent.height - y

        Repeater {
            model: [
                { text: qsTr("Trivel 3"), size: Theme.scaled(28), color: Theme.text },
                { text: qsTr("Version %1").arg(sheet.commands.version), size: Theme.textSize, color: Theme.text },
                { text: qsTr("Settings of the phone add-on, in a window"), size: Theme.headerSize,
                  color: Theme.secondary },
                { text: qsTr("MIT licence: to be used, changed and passed on freely, without any warranty"),
                  size: Theme.headerSize, color: Theme.secondary }
            ]
            Text {
                required property var modelData
                required property int index
                width: reading.rowWidth
                leftPadding: Theme.margin
                rightPadding: Theme.margin
                topPadding: index === 0 ? Theme.firstGap : Theme.margin
                text: modelData.text
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                font.pixelSize: modelData.size
                font.weight: index === 0 ? Font.DemiBold : Font.Normal
                color: modelData.color
                Accessible.role: index === 0 ? Accessible.Heading : Accessible.StaticText
                Accessible.name: text
            }
        }
    }
    SheetTitle {
        id: bar
        title: sheet.title
        onClosed: sheet.commands.closeSheet()
    }

    Shortcut {
        sequences: ["Escape"]
        enabled: sheet.activeFocus
        onActivated: sheet.commands.closeSheet()
    }
}
