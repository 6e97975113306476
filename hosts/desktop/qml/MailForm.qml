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
        color: Theme.row
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
        finishButton.focus: true
        onCancelled: form.composer.cancel()
        onFinished: form.composer.send()
    }

    Flickable {
        anchors.top: bar.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        contentHeight: fields.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        Column {
            id: fields
            width: parent.width

            MailField {
                label: qsTr("To:")
                value: form.composer ? form.composer.recipients : ""
            }
            MailField {
                label: qsTr("Subject:")
                value: form.composer ? form.composer.subject : ""
            }
            Repeater {
                model: form.composer ? form.composer.attachments : []
                AttachmentRow {
                    required property var modelData
                    name: modelData.name
                    note: modelData.missing ? qsTr("No data") : modelData.size
                }
            }
            Item {
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
}
