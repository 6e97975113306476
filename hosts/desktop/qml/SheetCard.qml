// SPDX-License-Identifier: MIT
import QtQuick

/// What stands on a card in the upper half of the window.
Rectangle {
    width: Math.min(parent.width - 32, 400)
    x: Math.round((parent.width - width) / 2)
    y: Math.round(Math.max(0, Math.min(parent.height * 0.14, 120, parent.height - height)))
    radius: 12
    color: Theme.card
}
