// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// The keys of the window's commands, each where it counts.
Repeater {
    id: keys

    property Navigation navigation: null
    property bool onPages: false
    readonly property bool outsideComposers: navigation !== null && !navigation.composerShown
                                             && !navigation.phones.asking

    model: navigation ? navigation.commands : null
    Item {
        id: command
        required property int index
        required property var sequences
        required property int scope
        Shortcut {
            sequences: command.sequences
            enabled: keys.onPages || command.scope === Commands.Everywhere
                     || command.scope === Commands.OutsideComposers && keys.outsideComposers
            onActivated: keys.navigation.commands.runLine(command.index)
        }
    }
}
