// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A post to look over and change before it goes: a card near the top of the window.
FocusScope {
    id: form

    required property Composer composer
    readonly property string title: composer ? composer.service : ""

    SheetCard {
        height: Math.min(206 * Math.max(1, Theme.textScale), parent.height - 16)

        SheetBar {
            id: bar
            width: parent.width
            title: form.title
            finishText: qsTr("Post")
            canFinish: form.composer !== null && form.composer.canPost
            onCancelled: form.composer.cancel()
            onFinished: form.composer.post()
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
                horizontalAlignment: TextEdit.AlignLeft
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
                onTextChanged: if (form.composer) form.composer.text = text
                // A tab goes to the next control; it has no business in a post.
                Keys.priority: Keys.BeforeItem
                Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
                Keys.onPressed: (event) => {
                    const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
                    event.accepted = isReturn && (event.modifiers & Qt.ControlModifier) && bar.canFinish
                    if (event.accepted) form.composer.post()
                }
                Accessible.role: Accessible.EditableText
                Accessible.name: qsTr("Text of the post")
                Accessible.multiLine: true
            }
        }
        Text {
            id: count
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 10
            anchors.right: parent.right
            anchors.rightMargin: Theme.margin
            readonly property int room: form.composer ? form.composer.room : 0
            text: room
            horizontalAlignment: Text.AlignLeft
            font.pixelSize: Theme.footerSize
            color: room < 0 ? Theme.danger : Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: form.composer ? form.composer.roomText : ""
        }
    }
}
