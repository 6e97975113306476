// SPDX-License-Identifier: MIT
import QtQuick

/// The bar of a sheet that is there to be read or chosen from: its title, and what closes it.
FocusScope {
    id: bar

    property string title: ""
    signal closed

    width: parent.width
    height: Theme.barHeight

    Rectangle {
        anchors.fill: parent
        color: Theme.bar
    }
    Text {
        // In the middle of the bar, or as near to it as the button lets it be.
        readonly property real to: closing.x - Theme.margin / 2
        x: Math.max(Theme.margin, Math.min(Math.round((parent.width - width) / 2), to - width))
        width: Math.min(Math.ceil(implicitWidth), to - Theme.margin)
        height: parent.height
        verticalAlignment: Text.AlignVCenter
        horizontalAlignment: Text.AlignLeft
        text: bar.title
        textFormat: Text.PlainText
        elide: Text.ElideRight
        fontSizeMode: Theme.textScale > 1 ? Text.HorizontalFit : Text.FixedSize
        minimumPixelSize: 12
        font.pixelSize: Theme.titleSize
        font.weight: Font.DemiBold
        color: Theme.text
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    BarButton {
        id: closing
        focus: true
        anchors.right: parent.right
        anchors.rightMargin: Theme.barInset(parent.width)
        text: qsTr("Close")
        onActivated: bar.closed()
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
        color: Theme.barLine
    }
}
