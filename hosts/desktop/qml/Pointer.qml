// SPDX-License-Identifier: MIT
import QtQuick

/// Tells whether the mouse is on its item, which no finger ever is, and has the tip shown while it rests there.
HoverHandler {
    id: pointer

    /// What to say of the item that cannot be seen of it; empty for nothing.
    property string tip: ""

    acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
    onHoveredChanged: hovered ? Tips.point(parent, tip) : Tips.leave(parent)
    Component.onDestruction: Tips.leave(parent)
}
