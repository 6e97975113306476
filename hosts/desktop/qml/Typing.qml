// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick

/// Tells text from other keys.
QtObject {
    /// Space is none: it is a row's key.
    function isText(event) {
        const others = Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier
        return !(event.modifiers & others) && event.text.length > 0 && event.text > " " && event.text !== "\u007f"
    }
}
