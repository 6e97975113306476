// SPDX-License-Identifier: MIT
import QtQuick

/// What a row cuts out of the card that it stands in with those above and below it; the whole ground of the row where
/// there are no cards.
Item {
    id: part

    /// Whether the card begins and ends with this row.
    property bool starts: true
    property bool last: true
    property color color: Theme.row

    anchors.fill: parent
    clip: Theme.cards && !(starts && last)

    Rectangle {
        y: part.starts ? 0 : -radius
        width: parent.width
        height: parent.height - y + (part.last ? 0 : radius)
        radius: Theme.cardRadius
        color: part.color
        border.width: Theme.cards ? Theme.hairline : 0
        border.color: Theme.separator
    }
}
