// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A row whose page has made its cell itself: drawn as the cell's view tree says.
TableRow {
    id: row

    required property var tree
    required property bool leads

    onActivated: row.table.model.tap(row.index)

    labelHeight: Math.ceil(cell.implicitHeight)

    ViewTree {
        id: cell
        width: implicitWidth
        height: implicitHeight
        tree: row.tree
        dark: Theme.dark
        textScale: Theme.textScale
        wraps: Theme.narrow
        // That of a row under a finger differs less from texts than that of one at rest.
        ground: Theme.rowPressed
        contrast: Theme.textContrast
    }
    DisclosureMark {
        visible: row.leads
    }
}
