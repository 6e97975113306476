// SPDX-License-Identifier: MIT
import QtQuick

/// The rows of a sheet below one another, to be scrolled.
Flickable {
    id: reading

    default property alias rows: column.data
    readonly property alias rowWidth: column.width
    property real roomBelow: 0
    /// Whether they stand in cards, as the window's width has it for what fills it.
    property bool inCards: Theme.cards

    contentHeight: column.height + roomBelow
    clip: true

    /// Scrolls as far as it takes to see the whole row.
    function reveal(row) {
        contentY = Math.max(0, Math.min(Math.max(contentY, row.y + row.height - height), row.y))
    }

    Column {
        id: column
        x: reading.inCards ? Theme.inset(reading.width) : 0
        width: reading.width - 2 * x
        topPadding: reading.inCards ? Theme.cardGap : 0
        bottomPadding: topPadding
    }
    ScrollThumb { flickable: reading }
}
