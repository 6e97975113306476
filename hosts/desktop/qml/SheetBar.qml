// SPDX-License-Identifier: MIT
import QtQuick

/// The bar of a sheet: cancel on the left, the title, and what finishes the sheet on the right.
Item {
    id: bar

    property string title: ""
    property string finishText: ""
    property bool canFinish: true
    /// How far from the edges its buttons are.
    property real side: Theme.margin
    signal cancelled
    signal finished

    height: Theme.barHeight

    BarButton {
        id: cancel
        x: bar.side
        text: qsTr("Cancel")
        onActivated: bar.cancelled()
    }
    Text {
        // In the middle of the bar, or as near to it as the buttons let it be.
        readonly property real from: cancel.x + cancel.width + Theme.margin / 2
        readonly property real to: finish.x - Theme.margin / 2
        x: Math.max(from, Math.min((parent.width - width) / 2, to - width))
        width: Math.min(Math.ceil(implicitWidth), to - from)
        height: parent.height
        verticalAlignment: Text.AlignVCenter
        text: bar.title
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        fontSizeMode: Theme.textScale > 1 ? Text.HorizontalFit : Text.FixedSize
        minimumPixelSize: 12
        font.pixelSize: Theme.titleSize
        font.weight: Font.DemiBold
        color: Theme.text
        Accessible.role: Accessible.Heading
        Accessible.name: bar.title
    }
    BarButton {
        id: finish
        anchors.right: parent.right
        anchors.rightMargin: bar.side
        text: bar.finishText
        bold: true
        usable: bar.canFinish
        onActivated: bar.finished()
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
        color: Theme.barLine
    }
}
