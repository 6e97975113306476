// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// What the user looks for on all pages, and below it what has been found. The keyboard is in the field; Down leads on to
/// the hits, and typing leads back.
FocusScope {
    id: sheet

    required property Find find

    focus: true
    Accessible.role: Accessible.Dialog
    readonly property string title: qsTr("Find")

    Component.onCompleted: field.forceActiveFocus()

    function typeOn(text) {
        field.forceActiveFocus()
        field.insert(field.length, text)
    }
    function moveTo(hit) {
        if (hit < 0 || hits.count === 0) return field.forceActiveFocus()
        hits.itemAt(Math.min(hit, hits.count - 1)).forceActiveFocus()
    }

    Backdrop {}
    Rectangle {
        id: bar
        width: parent.width
        height: Theme.barHeight
        color: Theme.bar

        Rectangle {
            x: Theme.barInset(parent.width)
            y: 6
            width: closing.x - 12 - x
            height: parent.height - 2 * y
            radius: 8
            color: Theme.row
            border.width: 1
            border.color: Theme.secondary

            TextInput {
                id: field
                anchors.fill: parent
                anchors.leftMargin: 10
                anchors.rightMargin: 10
                verticalAlignment: TextInput.AlignVCenter
                horizontalAlignment: TextInput.AlignLeft
                focus: true
                activeFocusOnTab: true
                clip: true
                selectByMouse: true
                font.pixelSize: Theme.textSize
                color: Theme.text
                selectionColor: Theme.tint
                selectedTextColor: Theme.tintText
                text: sheet.find.text
                onTextChanged: if (text !== sheet.find.text) sheet.find.text = text
                onAccepted: sheet.find.choose(0)
                Keys.onDownPressed: sheet.moveTo(0)
                Accessible.role: Accessible.EditableText
                Accessible.name: sheet.title
                Accessible.description: hits.count > 0 ? qsTr("%1 found").arg(hits.count) : sheet.find.remark

                Text {
                    anchors.fill: parent
                    visible: field.length === 0 && field.preeditText === ""
                    verticalAlignment: Text.AlignVCenter
                    horizontalAlignment: Text.AlignLeft
                    elide: Text.ElideRight
                    text: qsTr("Find on all pages")
                    textFormat: Text.PlainText
                    font.pixelSize: Theme.textSize
                    color: Theme.secondary
                    Accessible.ignored: true
                }
            }
            FocusFrame {
                anchors.margins: -3
                active: field.activeFocus
            }
        }
        BarButton {
            id: closing
            anchors.right: parent.right
            anchors.rightMargin: Theme.barInset(parent.width)
            text: qsTr("Close")
            onActivated: sheet.find.close()
        }
        Hairline {
            anchors.bottom: parent.bottom
            width: parent.width
            color: Theme.barLine
        }
    }

    Text {
        visible: text !== ""
        x: Theme.inset(parent.width) + Theme.margin
        y: bar.height + Theme.margin
        width: parent.width - 2 * x
        text: sheet.find.remark
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        font.pixelSize: Theme.footerSize
        color: Theme.secondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    SheetRows {
        id: reading
        objectName: "hits"
        y: bar.height
        width: parent.width
        height: parent.height - y

        Repeater {
            id: hits
            model: sheet.find
            onCountChanged: reading.contentY = 0
            FindHit {
                width: reading.rowWidth
                starts: index === 0
                last: index === hits.count - 1
                willOpen: index === 0 && field.activeFocus
                onActivated: sheet.find.choose(index)
                onStepped: (step) => sheet.moveTo(index + step)
                onTyped: (text) => sheet.typeOn(text)
                onReached: (row) => reading.reveal(row)
            }
        }
    }

    Connections {
        target: sheet.find
        function onTextChanged() { if (field.text !== sheet.find.text) field.text = sheet.find.text }
    }
    Shortcut {
        sequences: ["Escape"]
        enabled: sheet.activeFocus
        onActivated: {
            field.forceActiveFocus()
            sheet.find.escape()
        }
    }
    Shortcut {
        sequences: [StandardKey.Find]
        onActivated: {
            field.forceActiveFocus()
            field.selectAll()
        }
    }
}
