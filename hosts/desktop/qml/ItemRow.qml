// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// A row of a list, with a checkmark while it is chosen.
TableRow {
    id: row

    required property var picture
    required property bool marked

    onActivated: row.table.model.tap(row.index)

    Accessible.role: Accessible.ListItem
    Accessible.checkable: true
    Accessible.checked: marked
    Accessible.selected: marked

    readonly property bool hasIcon: icon.implicitWidth > 0
    readonly property bool hasPlaceholder: !hasIcon && table.itemsHaveIcons
    labelInset: hasPlaceholder ? Theme.iconInset : inset
    Component.onCompleted: if (hasIcon) table.itemsHaveIcons = true

    RowPicture {
        id: icon
        row: row
        picture: row.picture
    }
    IconPlaceholder { visible: row.hasPlaceholder }
    RowLabel { row: row }
    Glyph {
        visible: row.marked
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.checkmarkWidth
        height: Theme.checkmarkHeight
        shape: Glyph.Checkmark
        stroke: 2
        color: row.usable ? Theme.tint : Theme.greyed
    }
}
