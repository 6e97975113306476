// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// What a page puts into the navigation bar: the way back, its title or title view, its right-hand
/// item. `slide` is how far the page is from its place, from -1, left of it, to 1, right of it.
Item {
    id: bar

    required property Page page
    property real slide: 0
    /// What the phone is called; empty for none.
    property string phone: ""
    property alias backButton: back
    signal backWanted
    signal phonesWanted
    signal menuWanted

    height: Theme.barHeight
    opacity: 1 - Math.min(1, Math.abs(slide) * 1.6)

    /// Whether the page before this one is out of view.
    property bool hasBack: false
    /// Of two bars side by side, one has the window's menu.
    property bool hasMenu: true
    readonly property real rightSide: (hasMenu ? width - menu.x : page.hasRightItem ? width - right.x : 0) + 8
    /// What the title would have for itself in the middle of the bar.
    readonly property real titleWidth: page.hasTitleView ? titleView.width : title.implicitWidth
    /// How wide the back button's text may be beside that.
    readonly property real backRoom: (width - titleWidth) / 2 - 8 - chevron.width - 5 - 8

    TextMetrics {
        id: shortBack
        text: qsTr("Back")
        font: backTitle.font
    }

    // Named for the page before while that fits beside the title, else "Back", else a mere chevron.
    BarButton {
        id: back
        visible: bar.hasBack
        x: 8 + bar.slide * 40
        height: parent.height
        width: chevron.width + 5 + backTitle.implicitWidth
        name: qsTr("Back to %1").arg(bar.page.backTitle)
        onActivated: bar.backWanted()

        Glyph {
            id: chevron
            anchors.verticalCenter: parent.verticalCenter
            width: 13
            height: 21
            shape: Glyph.Back
            stroke: 3
            color: Theme.tint
        }
        Text {
            id: backTitle
            x: chevron.width + 5
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: fullBack.advanceWidth <= bar.backRoom ? bar.page.backTitle
                  : shortBack.advanceWidth <= bar.backRoom ? shortBack.text : ""
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            font.pixelSize: Theme.titleSize
            color: Theme.tint
            Accessible.ignored: true
        }
        TextMetrics {
            id: fullBack
            text: bar.page.backTitle
            font: backTitle.font
        }
    }

    // On the first page, where the way back is on others.
    BarButton {
        visible: bar.page.depth === 0 && bar.phone !== ""
        x: 8 + bar.slide * 40
        height: parent.height
        width: Math.min(implicitWidth, (parent.width - bar.titleWidth) / 2 - x - 8)
        text: bar.phone
        name: qsTr("Phone: %1").arg(bar.phone)
        onActivated: bar.phonesWanted()
    }

    // In the middle of the bar, or as near to it as the rest lets it be.
    Text {
        id: title
        visible: !bar.page.hasTitleView
        readonly property real from: bar.hasBack ? 8 + back.width + 8 : 8
        readonly property real to: parent.width - bar.rightSide
        readonly property real middle: (parent.width - width) / 2
        x: Math.round(Math.max(from, Math.min(middle, to - width)) + bar.slide * parent.width / 3)
        width: Math.min(Math.ceil(implicitWidth), to - from)
        height: parent.height
        verticalAlignment: Text.AlignVCenter
        text: bar.page.title
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        // Large titles are as large as there is room for.
        fontSizeMode: Theme.textScale > 1 ? Text.HorizontalFit : Text.FixedSize
        minimumPixelSize: 12
        font.pixelSize: Theme.titleSize
        font.weight: Font.DemiBold
        color: Theme.text
        Accessible.role: Accessible.Heading
        Accessible.name: bar.page.title
        Pointer { tip: title.truncated ? title.text : "" }
    }
    ViewTree {
        id: titleView
        visible: bar.page.hasTitleView
        x: Math.round((parent.width - width) / 2) + bar.slide * parent.width / 3
        anchors.verticalCenter: parent.verticalCenter
        width: implicitWidth
        height: implicitHeight
        tree: bar.page.titleView
        dark: Theme.dark
        ground: Theme.bar
        contrast: Theme.textContrast
        Accessible.role: Accessible.Heading
        Accessible.name: bar.page.title
    }

    BarButton {
        id: menu
        visible: bar.hasMenu
        x: (bar.page.hasRightItem ? right.x : parent.width) - 16 - width
        height: parent.height
        implicitWidth: dots.width
        name: qsTr("Menu")
        onActivated: bar.menuWanted()
        Glyph {
            id: dots
            anchors.verticalCenter: parent.verticalCenter
            width: 20
            height: 20
            shape: Glyph.Dots
            stroke: 1.5
            color: Theme.tint
        }
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
            ground: Theme.bar
            contrast: Theme.textContrast
        }
    }
}
