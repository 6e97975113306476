// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A row that opens a page or does something; its chevron says so.
TableRow {
    id: row

    required property var picture
    required property bool leads

    onActivated: row.table.model.tap(row.index)

    RowPicture {
        row: row
        picture: row.picture
    }
    RowLabel { row: row }
    DisclosureMark {
        visible: row.leads
    }
}
