// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A post to look over and change before it goes: a card near the top of the window.
FocusScope {
    id: form

    required property Composer composer
    readonly property string title: composer ? composer.service : ""
    /// As long as a post may be.
    readonly property int most: 140

    Rectangle {
        id: card
        width: Math.min(parent.width - 32, 400)
        x: Math.round((parent.width - width) / 2)
        y: Math.round(Math.min(parent.height * 0.14, 120))
        height: Math.min(206 * Math.max(1, Theme.textScale), parent.height - y - 16)
        radius: 12
        color: Theme.card

        SheetBar {
            id: bar
            width: parent.width
            title: form.title
            finishText: qsTr("Post")
            canFinish: words.text.trim() !== ""
            onCancelled: form.composer.cancel()
            onFinished: form.composer.post(words.text)
        }
        Flickable {
            anchors.top: bar.bottom
            anchors.bottom: count.top
            anchors.margins: Theme.margin
            anchors.bottomMargin: 6
            x: Theme.margin
            width: parent.width - 2 * Theme.margin
            contentHeight: words.height
            clip: true
            boundsBehavior: Flickable.StopAtBounds

            function keepVisible(part) {
                if (part.y < contentY) contentY = part.y
                else if (part.y + part.height > contentY + height) contentY = part.y + part.height - height
            }

            TextEdit {
                id: words
                width: parent.width
                height: Math.max(implicitHeight, parent.parent.height)
                focus: true
                activeFocusOnTab: true
                wrapMode: TextEdit.Wrap
                textFormat: TextEdit.PlainText
                selectByMouse: true
                font.pixelSize: Theme.textSize
                color: Theme.text
                selectionColor: Theme.tint
                selectedTextColor: Theme.tintText
                onCursorRectangleChanged: parent.parent.keepVisible(cursorRectangle)
                Component.onCompleted: {
                    text = form.composer ? form.composer.text : ""
                    cursorPosition = length
                }
                // A tab goes to the next control; it has no business in a post.
                KeyNavigation.priority: KeyNavigation.BeforeItem
                KeyNavigation.tab: bar.finishButton
                KeyNavigation.backtab: bar.finishButton
                Keys.onPressed: (event) => {
                    const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
                    event.accepted = isReturn && (event.modifiers & Qt.ControlModifier) && bar.canFinish
                    if (event.accepted) form.composer.post(words.text)
                }
                Accessible.role: Accessible.EditableText
                Accessible.name: qsTr("Post")
                Accessible.multiLine: true
            }
        }
        Text {
            id: count
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 10
            anchors.right: parent.right
            anchors.rightMargin: Theme.margin
            readonly property int room: form.most - words.length
            text: room
            horizontalAlignment: Text.AlignLeft
            font.pixelSize: Theme.footerSize
            color: room < 0 ? Theme.danger : Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("%n character(s) left", "", room)
        }
    }
}
