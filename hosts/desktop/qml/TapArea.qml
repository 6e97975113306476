// SPDX-License-Identifier: MIT
import QtQuick

/// Tells a tap from what only begins like one: a pointer that strays while it is down drags or scrolls, wherever it is
/// let go.
MouseArea {
    /// Where the pointer went down, and whether it has left that place since.
    property point from
    property bool strayed: false
    signal tapped

    onPressed: (mouse) => {
        from = Qt.point(mouse.x, mouse.y)
        strayed = false
    }
    onPositionChanged: (mouse) => {
        if (Math.hypot(mouse.x - from.x, mouse.y - from.y) >= drag.threshold) strayed = true
    }
    onClicked: if (!strayed) tapped()
}
