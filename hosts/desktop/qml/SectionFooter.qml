// SPDX-License-Identifier: MIT
import QtQuick

/// What stands below a section's rows: its footer text if there is one, and the gap before the next.
Item {
    id: footer

    required property Item table
    required property string text
    required property bool bare
    required property bool animated

    x: table.inset
    width: table.cellWidth
    // On whole points, so that the lines of the rows below stay thin.
    readonly property real wanted: text === "" ? Theme.gap
                                               : Theme.textGap + Math.ceil(words.implicitHeight) + Theme.footerGap
    property real shown: 0
    height: shown
    Component.onCompleted: shown = wanted

    // Lines that come or go in the same breath take the change of height along as they move.
    onWantedChanged: {
        motion.stop()
        if (animated && Theme.rowTime > 0) Qt.callLater(follow)
        else shown = wanted
    }
    function follow() {
        if (ListView.view && !ListView.view.inMotion) motion.restart()
        else shown = wanted
    }
    NumberAnimation {
        id: motion
        target: footer
        property: "shown"
        to: footer.wanted
        duration: Theme.rowTime
        easing.type: Easing.InOutQuad
    }
    onTextChanged: if (animated && Theme.rowTime > 0) fadeIn.restart()

    // Opaque: rows on the move pass below.
    Rectangle {
        anchors.fill: parent
        color: Theme.page
    }
    Hairline {
        width: parent.width
        visible: !footer.bare && !Theme.cards
    }
    Text {
        id: words
        x: Theme.margin
        y: Theme.textGap
        width: parent.width - 2 * Theme.margin
        text: footer.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.WordWrap
        font.pixelSize: Theme.footerSize
        color: Theme.secondary
        Accessible.ignored: true
        NumberAnimation on opacity {
            id: fadeIn
            running: false
            from: 0
            to: 1
            duration: Theme.rowTime
        }
    }
}
