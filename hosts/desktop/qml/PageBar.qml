// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// What a page puts into the navigation bar: the way back, its title or title view, its right-hand
/// item. `slide` is how far the page is from its place, from -1, left of it, to 1, right of it.
Item {
    id: bar

    required property Page page
    property real slide: 0
    property alias backButton: back
    signal backWanted

    height: Theme.barHeight
    opacity: 1 - Math.min(1, Math.abs(slide) * 1.6)

    BarButton {
        id: back
        visible: bar.page.backTitle !== ""
        x: 8 + bar.slide * 40
        height: parent.height
        width: Math.min(implicitWidth, title.x - 16)
        implicitWidth: 18 + backTitle.implicitWidth
        name: qsTr("Back to %1").arg(bar.page.backTitle)
        onActivated: bar.backWanted()

        Glyph {
            anchors.verticalCenter: parent.verticalCenter
            width: 13
            height: 21
            shape: Glyph.Back
            stroke: 3
            color: Theme.tint
        }
        Text {
            id: backTitle
            x: 18
            width: Math.max(0, parent.width - x)
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: bar.page.backTitle
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font.pixelSize: Theme.titleSize
            color: Theme.tint
            Accessible.ignored: true
        }
    }

    // In the middle of the bar, or as near to it as the back button lets it be.
    Text {
        id: title
        visible: !bar.page.hasTitleView
        readonly property real most: parent.width - 16 - rightSide
        readonly property real rightSide: right.visible ? right.width + 16 : 8
        readonly property real middle: (parent.width - width) / 2
        x: Math.min(Math.max(middle, bar.page.backTitle !== "" ? 96 : 8), parent.width - width - rightSide)
           + bar.slide * parent.width / 3
        width: Math.min(implicitWidth, parent.width - rightSide - (bar.page.backTitle !== "" ? 96 : 8))
        height: parent.height
        verticalAlignment: Text.AlignVCenter
        text: bar.page.title
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font.pixelSize: Theme.titleSize
        font.weight: Font.DemiBold
        color: Theme.text
        Accessible.role: Accessible.Heading
        Accessible.name: bar.page.title
    }
    ViewTree {
        visible: bar.page.hasTitleView
        x: Math.round((parent.width - width) / 2) + bar.slide * parent.width / 3
        anchors.verticalCenter: parent.verticalCenter
        width: implicitWidth
        height: implicitHeight
        tree: bar.page.titleView
        dark: Theme.dark
        Accessible.role: Accessible.Heading
        Accessible.name: bar.page.title
    }

    BarButton {
        id: right
        visible: bar.page.hasRightItem
        anchors.right: parent.right
        anchors.rightMargin: 16
        height: parent.height
        implicitWidth: rightView.implicitWidth
        name: bar.page.rightItemName
        onActivated: bar.page.touchRightItem()
        ViewTree {
            id: rightView
            anchors.verticalCenter: parent.verticalCenter
            width: implicitWidth
            height: implicitHeight
            tree: bar.page.rightItem
            dark: Theme.dark
        }
    }
}
