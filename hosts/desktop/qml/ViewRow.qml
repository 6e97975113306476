// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A row whose page has made its cell itself: drawn as the cell's view tree says.
TableRow {
    id: row

    required property var tree
    required property bool leads

    onActivated: row.table.model.tap(row.index)

    ViewTree {
        width: implicitWidth
        height: implicitHeight
        tree: row.tree
        dark: Theme.dark
    }
    DisclosureMark {
        visible: row.leads
    }
}
