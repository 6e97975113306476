// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// Asks the user something before a composer goes on, over everything else in its sheet.
FocusScope {
    id: asking

    property string title: ""
    property string text: ""
    property string yes: ""
    property string no: ""
    /// Whether there is a field to fill in, what it begins with, and what is wrong with what was in it.
    property bool hasField: false
    property string suggestion: ""
    property string problem: ""
    signal agreed(string typed)
    signal declined

    // What could be lost is not lost by one key too many.
    Component.onCompleted: {
        const first = hasField ? field : declining
        first.forceActiveFocus()
    }

    Accessible.role: Accessible.Dialog
    Accessible.name: title
    Accessible.description: text

    Backdrop { color: Theme.scrim }
    SheetCard {
        height: Math.min(content.height + buttons.height, parent.height - 16)

        Flickable {
            id: reading
            width: parent.width
            height: parent.height - buttons.height
            contentHeight: content.height
            clip: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: contentHeight > height
            onHeightChanged: showField()
            onContentHeightChanged: showField()
            // Where there is no room for everything, what is to be filled in comes first.
            function showField() {
                if (!field.activeFocus || contentHeight <= height) return
                contentY = Math.max(0, Math.min(contentHeight, box.y + box.height + content.bottomPadding) - height)
            }
            Keys.onUpPressed: contentY = Math.max(0, contentY - Theme.footerSize)
            Keys.onDownPressed: contentY = Math.min(Math.max(0, contentHeight - height), contentY + Theme.footerSize)

            Column {
                id: content
                x: Theme.margin
                width: parent.width - 2 * x
                topPadding: 16
                bottomPadding: 12
                spacing: 10

                Text {
                    width: parent.width
                    text: asking.title
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    font.pixelSize: Theme.titleSize
                    font.weight: Font.DemiBold
                    color: Theme.text
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                Text {
                    width: parent.width
                    text: asking.text
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    font.pixelSize: Theme.headerSize
                    color: Theme.text
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                Rectangle {
                    id: box
                    visible: asking.hasField
                    width: parent.width
                    height: field.implicitHeight + 16
                    radius: 6
                    color: Theme.row
                    border.width: 1
                    border.color: Theme.secondary

                    TextInput {
                        id: field
                        x: 8
                        width: parent.width - 2 * x
                        anchors.verticalCenter: parent.verticalCenter
                        activeFocusOnTab: true
                        onActiveFocusChanged: reading.showField()
                        clip: true
                        selectByMouse: true
                        text: asking.suggestion
                        horizontalAlignment: TextInput.AlignLeft
                        font.pixelSize: Theme.headerSize
                        color: Theme.text
                        selectionColor: Theme.tint
                        selectedTextColor: Theme.tintText
                        onAccepted: asking.agreed(text)
                        Accessible.role: Accessible.EditableText
                        Accessible.name: asking.title
                    }
                    FocusFrame {
                        anchors.margins: -3
                        active: field.activeFocus
                    }
                }
                Text {
                    visible: text !== ""
                    width: parent.width
                    text: asking.problem
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignLeft
                    font.pixelSize: Theme.headerSize
                    color: Theme.danger
                    Accessible.role: Accessible.AlertMessage
                    Accessible.name: text
                }
            }
            ScrollThumb { flickable: reading }
        }
        FocusFrame {
            anchors.fill: reading
            anchors.margins: 3
            active: reading.activeFocus
        }
        Item {
            id: buttons
            anchors.bottom: parent.bottom
            width: parent.width
            height: Theme.barHeight

            Hairline { width: parent.width }
            BarButton {
                id: declining
                x: Theme.margin
                text: asking.no
                onActivated: asking.declined()
            }
            BarButton {
                anchors.right: parent.right
                anchors.rightMargin: Theme.margin
                text: asking.yes
                bold: true
                onActivated: asking.agreed(field.text)
            }
        }
    }
}
