// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// What the user has yet to read, below the pages. It does not take the keyboard; Tab comes to its buttons.
FocusScope {
    id: banner

    required property Banners banners
    /// How high it may become; longer texts scroll.
    property real mostHeight: 200
    /// The user is done with what is shown, and the keyboard with this.
    signal done

    // What stays takes as little of the page as it can.
    readonly property bool isWide: body.width >= 560 || (banners.staying && buttons.width <= body.width / 3)
    readonly property real gap: 12
    readonly property real buttonsRoom: isWide ? 0 : buttons.height
    readonly property real wordsRoom: Math.max(words.implicitHeight, mark.height) + 2 * gap

    implicitHeight: Math.min(mostHeight, Math.ceil(wordsRoom + buttonsRoom))

    Accessible.role: Accessible.AlertMessage
    Accessible.name: banners.text
    readonly property string told: banners.text
    onToldChanged: begin()
    Component.onCompleted: begin()

    function announce() {
        if (told !== "") banners.announce(banner)
    }
    // Not while the user is about to do something with it.
    HoverHandler { id: pointer }
    readonly property bool passes: banners.passing && !pointer.hovered && !activeFocus
    onPassesChanged: passes ? passing.restart() : passing.stop()
    Timer {
        id: passing
        interval: Theme.passingTime
        onTriggered: banner.banners.close()
    }
    // Each has its whole time, whatever was told before it.
    function begin() {
        Qt.callLater(announce)
        if (passes) passing.restart()
    }
    function close() {
        done()
        banners.close()
    }
    function act() {
        done()
        banners.act()
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.bar
    }
    Hairline {
        width: parent.width
        color: Theme.barLine
    }
    // What lies beneath is not for the mouse.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onWheel: (wheel) => wheel.accepted = true
    }

    Item {
        id: body
        x: Theme.inset(parent.width)
        width: parent.width - 2 * x
        height: parent.height

        Rectangle {
            id: mark
            x: Theme.margin
            y: banner.gap
            width: Theme.headerSize + 6
            height: width
            radius: width / 2
            color: banner.banners.problem ? Theme.danger : Theme.tint
            Text {
                anchors.centerIn: parent
                text: banner.banners.problem ? "!" : "i"
                horizontalAlignment: Text.AlignLeft
                font.pixelSize: Theme.headerSize
                font.weight: Font.Bold
                color: Theme.bar
                Accessible.ignored: true
            }
        }
        Flickable {
            id: reading
            x: mark.x + mark.width + 10
            y: banner.gap
            width: parent.width - x - (banner.isWide ? buttons.width + 2 * Theme.margin : Theme.margin)
            height: parent.height - 2 * y - banner.buttonsRoom
            contentHeight: words.implicitHeight
            clip: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: contentHeight > height
            Keys.onUpPressed: contentY = Math.max(0, contentY - Theme.footerSize)
            Keys.onDownPressed: contentY = Math.min(contentHeight - height, contentY + Theme.footerSize)

            Text {
                id: words
                width: reading.width
                topPadding: Math.max(0, (mark.height - contentHeight) / 2)
                text: banner.banners.text
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignLeft
                wrapMode: Text.Wrap
                font.pixelSize: Theme.headerSize
                color: Theme.text
                Accessible.ignored: true
            }
            ScrollThumb { flickable: reading }
        }
        FocusFrame {
            anchors.fill: reading
            anchors.margins: -4
            active: reading.activeFocus
        }
        Row {
            id: buttons
            anchors.right: parent.right
            anchors.rightMargin: Theme.margin
            y: Math.round((parent.height - height) / (banner.isWide ? 2 : 1))
            height: Theme.barHeight
            spacing: 24

            BarButton {
                visible: text !== ""
                text: banner.banners.action
                bold: true
                onActivated: banner.act()
            }
            BarButton {
                visible: !banner.banners.staying
                text: banner.banners.waiting > 0 ? qsTr("Next") : qsTr("Close")
                onActivated: banner.close()
            }
        }
    }

    Shortcut {
        sequences: ["Escape"]
        enabled: banner.activeFocus
        onActivated: banner.close()
    }
}
