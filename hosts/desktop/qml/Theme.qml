// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick
import Trivel3.Settings

/// Every size and colour. Lengths are in points, which are logical pixels here.
QtObject {
    property bool dark: false
    property bool highContrast: false
    property bool reducedMotion: false
    /// Whether the user last used the keyboard: then the focus is drawn.
    property bool showsFocus: false
    /// Somebody has put the keyboard's focus in a place that they know.
    signal focusPlaced
    /// The colour that the user has chosen for what can be touched; clear for none.
    property color accent: "transparent"
    /// How large texts are, 1 being usual.
    property real textScale: 1
    /// Whether the window is narrower than the phone that it shows.
    property bool narrow: false
    /// Whether what there is to read and to touch stands in cards, with room beside them: the window is wider than the
    /// phone that it shows.
    property bool cards: false

    /// How much texts differ at least from what they stand on, and how much what has to be seen beside
    /// them: outlines, knobs, marks, and what is greyed.
    readonly property real textContrast: highContrast ? 7 : 4.5
    readonly property real markContrast: highContrast ? 4.5 : 3

    // What texts and marks stand on.
    readonly property color page: dark ? "#000000" : "#efeff4"
    readonly property color row: dark ? "#1c1c1e" : "#ffffff"
    readonly property color rowPressed: dark ? "#3a3a3c" : "#e5e5ea"
    // Under the mouse.
    readonly property color rowPointed: card
    readonly property color barPointed: dark ? card : page
    readonly property color bar: dark ? "#161618" : "#f8f8f8"
    readonly property color card: dark ? "#2c2c2e" : "#f4f4f6"
    readonly property color switchOn: of("#219440", "#24a148", "#107535", "#30d158")
    readonly property color switchOff: dark ? "#2c2c2e" : "#ffffff"

    readonly property color text: dark ? "#ffffff" : "#000000"
    readonly property color secondary: of("#67676c", "#98989f", "#4a4a4f", "#c4c4ca")
    readonly property color greyed: of("#88888e", "#74747a", "#6a6a70", "#929298")
    readonly property color tint: Contrast.reached(accent.a > 0 ? accent : dark ? "#409cff" : "#0069d9",
                                                   [bar, row, page, card], textContrast)
    /// What stands on the tint.
    readonly property color tintText: dark ? "#000000" : "#ffffff"
    readonly property color danger: of("#c9201a", "#ff6961", "#9c120d", "#ffa29c")
    readonly property color disclosure: of("#7c7c82", "#8a8a90", "#5c5c62", "#aaaab0")
    readonly property color focus: tint
    readonly property color scrollThumb: dark ? "#90ffffff" : "#90000000"
    readonly property color switchOutline: of("#7c7c82", "#8a8a90", "#5c5c62", "#aaaab0")
    readonly property color knobOn: dark && highContrast ? "#000000" : "#ffffff"
    readonly property color knobOff: dark ? "#e5e5ea" : switchOutline

    // What only parts, shades or stands for something.
    readonly property color barLine: of("#b2b2b2", "#3d3d41", "#5c5c62", "#aaaab0")
    readonly property color separator: of("#c8c7cc", "#38383a", "#88888e", "#74747a")
    readonly property color scrim: dark ? "#99000000" : "#66000000"
    readonly property color placeholder: dark ? "#2c2c2e" : "#f2f2f7"
    readonly property color placeholderMark: dark ? "#6b6b70" : "#b4b4ba"

    function of(inLight, inDark, strongInLight, strongInDark) {
        if (highContrast) return dark ? strongInDark : strongInLight
        return dark ? inDark : inLight
    }

    readonly property int textSize: scaled(17)
    readonly property int titleSize: scaled(17)
    readonly property int headerSize: scaled(14)
    readonly property int footerSize: scaled(14)
    readonly property int smallSize: scaled(12)

    function scaled(size) {
        return Math.round(size * textScale)
    }

    /// Above and below a row's label, at least.
    readonly property real labelPadding: 10
    readonly property real barHeight: 44 + Math.max(0, Math.round((titleSize - 17) * 1.25))
    readonly property real margin: CellMeasures.margin
    readonly property real iconSize: 29
    /// Where a label begins beside an icon.
    readonly property real iconInset: margin + iconSize + margin
    readonly property real iconRadius: 6.5
    readonly property real switchWidth: CellMeasures.switchWidth
    readonly property real switchHeight: 31
    readonly property real outline: highContrast ? 2 : 1.5
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
    /// Of cards: how wide they are at most, and how much room is left beside them.
    readonly property real cardWidth: 640
    readonly property real cardGap: 16
    readonly property real cardRadius: cards ? 10 : 0
    /// How far from either edge of a column of this width its cards are.
    function inset(width) {
        return cards ? Math.max(cardGap, Math.round((width - cardWidth) / 2)) : 0
    }
    /// The same of what stands in a bar.
    function barInset(width) {
        return cards ? inset(width) : margin
    }
    /// Of the first page where it stays in view beside the one that is open: it grows with its texts, within limits.
    readonly property real columnGrowth: Math.max(1, Math.min(textScale, 1.5))
    readonly property real firstColumn: Math.round(360 * columnGrowth)
    /// From which width of the window on that is so.
    readonly property real columnsFrom: 900 * columnGrowth
    /// How far a row slides as it comes.
    readonly property real slide: 30
    /// The thinnest line that the screen can draw.
    property real hairline: 1

    /// How long news stay that go by themselves.
    readonly property int passingTime: 6000
    readonly property int pushTime: reducedMotion ? 0 : 350
    readonly property int rowTime: reducedMotion ? 0 : 280
    readonly property int switchTime: reducedMotion ? 0 : 200
    readonly property int fadeTime: reducedMotion ? 0 : 200
}
