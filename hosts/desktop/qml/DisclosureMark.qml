// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// The chevron at a row's right edge.
Glyph {
    anchors.right: parent.right
    anchors.rightMargin: Theme.margin
    anchors.verticalCenter: parent.verticalCenter
    width: Theme.disclosureWidth
    height: Theme.disclosureHeight
    shape: Glyph.Disclosure
    stroke: 2
    color: Theme.disclosure
}
