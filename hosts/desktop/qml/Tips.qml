// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick

/// What the mouse rests on, where there is more to say of it than can be seen. The window has one at a time.
QtObject {
    id: tips

    /// Null before the mouse has rested for as long as the desktop wants.
    property Item over: null
    property string text: ""

    property Item pointed: null
    readonly property Timer rest: Timer {
        interval: Qt.styleHints.mousePressAndHoldInterval
        onTriggered: tips.over = tips.pointed
    }

    /// The mouse has come to the item; an empty text says that all can be seen.
    function point(item, text) {
        leave(pointed)
        if (text === "") return
        pointed = item
        tips.text = text
        rest.restart()
    }
    function leave(item) {
        if (pointed !== item) return
        rest.stop()
        pointed = null
        over = null
    }
}
