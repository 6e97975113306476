// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick
import Trivel3.Settings

/// Every size and colour. Lengths are in points, which are logical pixels here.
QtObject {
    property bool dark: false
    property bool reducedMotion: false
    /// Whether the user last used the keyboard: then the focus is drawn.
    property bool showsFocus: false

    readonly property color page: dark ? "#000000" : "#efeff4"
    readonly property color row: dark ? "#1c1c1e" : "#ffffff"
    readonly property color rowPressed: dark ? "#3a3a3c" : "#d9d9d9"
    readonly property color bar: dark ? "#161618" : "#f8f8f8"
    readonly property color barLine: dark ? "#3d3d41" : "#b2b2b2"
    readonly property color separator: dark ? "#38383a" : "#c8c7cc"
    readonly property color text: dark ? "#ffffff" : "#000000"
    readonly property color secondary: dark ? "#98989f" : "#6d6d72"
    readonly property color greyed: dark ? "#6b6b70" : "#a0a0a6"
    readonly property color disclosure: dark ? "#5a5a5f" : "#c7c7cc"
    readonly property color tint: dark ? "#0a84ff" : "#007aff"
    readonly property color danger: dark ? "#ff453a" : "#e0291f"
    readonly property color switchOn: dark ? "#30d158" : "#4cd964"
    readonly property color switchOff: dark ? "#39393d" : "#e5e5ea"
    readonly property color switchHole: dark ? "#39393d" : "#ffffff"
    readonly property color knobEdge: "#22000000"
    readonly property color scrim: dark ? "#99000000" : "#66000000"
    readonly property color focus: tint
    readonly property color scrollThumb: dark ? "#80ffffff" : "#66000000"

    readonly property int textSize: 17
    readonly property int titleSize: 17
    readonly property int headerSize: 14
    readonly property int footerSize: 14
    readonly property int smallSize: 12

    readonly property real barHeight: 44
    readonly property real margin: CellMeasures.margin
    readonly property real iconSize: 29
    readonly property real iconRadius: 6.5
    readonly property real switchWidth: CellMeasures.switchWidth
    readonly property real switchHeight: 31
    readonly property real disclosureWidth: 8
    readonly property real disclosureHeight: 13
    readonly property real checkmarkWidth: 14
    readonly property real checkmarkHeight: 12
    readonly property real firstGap: 35
    readonly property real gap: 35
    readonly property real textGap: 8
    readonly property real firstTitleGap: 28
    readonly property real titleGap: 4
    readonly property real footerGap: 23
    /// How far a row slides as it comes.
    readonly property real slide: 30
    /// The thinnest line that the screen can draw.
    property real hairline: 1

    readonly property int pushTime: reducedMotion ? 0 : 350
    readonly property int rowTime: reducedMotion ? 0 : 280
    readonly property int switchTime: reducedMotion ? 0 : 200
    readonly property int fadeTime: reducedMotion ? 0 : 200
}
