// SPDX-License-Identifier: MIT
import QtQuick

/// The rows of a sheet below one another, to be scrolled.
Flickable {
    id: reading

    default property alias rows: column.data
    property real roomBelow: 0

    contentHeight: column.height + roomBelow
    clip: true

    /// Scrolls as far as it takes to see the whole row.
    function reveal(row) {
        contentY = Math.max(0, Math.min(Math.max(contentY, row.y + row.height - height), row.y))
    }

    Column {
        id: column
        width: reading.width
    }
    ScrollThumb { flickable: reading }
}
