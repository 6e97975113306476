// SPDX-License-Identifier: MIT
import QtQuick

/// A line between things, one device pixel thick.
Rectangle {
    height: Theme.hairline
    color: Theme.separator
}
