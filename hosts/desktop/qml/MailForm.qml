// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// An e-mail to look over before it goes: whom it is for, what it is about, what goes with it.
FocusScope {
    id: form

    required property Composer composer
    readonly property string title: composer && composer.subject !== "" ? composer.subject : qsTr("New Message")

    Rectangle {
        anchors.fill: parent
        color: Theme.cards ? Theme.page : Theme.row
    }
    Rectangle {
        width: parent.width
        height: Theme.barHeight
        color: Theme.bar
    }
    SheetBar {
        id: bar
        width: parent.width
        title: form.title
        finishText: qsTr("Send")
        side: Theme.barInset(width)
        onCancelled: form.composer.cancel()
        onFinished: form.composer.send()
    }

    // It has the keyboard first: what acts on the e-mail is not one key too many away from the row that has opened it.
    Flickable {
        id: content
        focus: true
        activeFocusOnTab: true
        Accessible.role: Accessible.Grouping
        Accessible.name: qsTr("E-mail to %1").arg(form.composer ? form.composer.recipients : "")
        Keys.onUpPressed: contentY = Math.max(0, contentY - Theme.barHeight)
        Keys.onDownPressed: contentY = Math.max(0, Math.min(contentHeight - height, contentY + Theme.barHeight))
        anchors.top: bar.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        contentHeight: fields.y + fields.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        CardPart {
            visible: Theme.cards
            anchors.fill: fields
            anchors.bottomMargin: drafting.height
        }
        Column {
            id: fields
            x: Theme.inset(content.width)
            y: Theme.cards ? Theme.cardGap : 0
            width: content.width - 2 * x

            MailField {
                label: qsTr("To:")
                value: form.composer ? form.composer.recipients : ""
            }
            MailField {
                last: attachments.count === 0
                label: qsTr("Subject:")
                value: form.composer ? form.composer.subject : ""
            }
            Repeater {
                id: attachments
                model: form.composer ? form.composer.attachments : []
                AttachmentRow {
                    required property var modelData
                    required property int index
                    last: index === attachments.count - 1
                    name: modelData.name
                    note: modelData.missing ? qsTr("No data") : modelData.size
                }
            }
            Item {
                id: drafting
                width: parent.width
                height: Theme.barHeight + 16
                BarButton {
                    x: Theme.margin
                    y: 8
                    text: qsTr("Save Draft")
                    onActivated: form.composer.saveDraft()
                }
            }
        }
    }
    FocusFrame {
        anchors.fill: content
        anchors.margins: 3
        anchors.leftMargin: Math.max(3, fields.x - 6)
        anchors.rightMargin: anchors.leftMargin
        active: content.activeFocus
    }
}
