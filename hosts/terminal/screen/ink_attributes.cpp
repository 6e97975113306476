// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/ink_attributes.h"

namespace hosts::terminal::screen {
namespace {

enum Pair : short { usual, good, warning, bar, barKey, selected, field };

constexpr short terminalsOwn = -1;

attr_t coloured(Pair pair, attr_t more = A_NORMAL) {
    return static_cast<attr_t>(COLOR_PAIR(pair)) | more;
}

attr_t colouredInk(Ink ink) {
    switch (ink) {
        case Ink::plain:
            return A_NORMAL;
        case Ink::strong:
        case Ink::scroll:
            return A_BOLD;
        case Ink::faint:
        case Ink::quiet:
        case Ink::scrollTrack:
            return A_DIM;
        case Ink::good:
            return coloured(good);
        case Ink::warning:
            return coloured(warning, A_BOLD);
        case Ink::bar:
            return coloured(bar);
        case Ink::barTitle:
            return coloured(bar, A_BOLD);
        case Ink::barKey:
            return coloured(barKey, A_BOLD);
        case Ink::field:
            return coloured(field);
        case Ink::button:
            return A_NORMAL;
        case Ink::focusedButton:
            return coloured(selected);
    }
    return A_NORMAL;
}

attr_t plainInk(Ink ink) {
    switch (ink) {
        case Ink::strong:
        case Ink::good:
        case Ink::warning:
        case Ink::scroll:
            return A_BOLD;
        case Ink::faint:
        case Ink::quiet:
        case Ink::scrollTrack:
            return A_DIM;
        case Ink::bar:
        case Ink::focusedButton:
            return A_REVERSE;
        case Ink::barTitle:
        case Ink::barKey:
            return A_REVERSE | A_BOLD;
        case Ink::field:
            return A_UNDERLINE;
        case Ink::plain:
        case Ink::button:
            break;
    }
    return A_NORMAL;
}

}  // namespace

void startColours() {
    ::start_color();
    ::use_default_colors();
    ::init_pair(good, COLOR_GREEN, terminalsOwn);
    ::init_pair(warning, COLOR_RED, terminalsOwn);
    ::init_pair(bar, COLOR_WHITE, COLOR_BLUE);
    ::init_pair(barKey, COLOR_YELLOW, COLOR_BLUE);
    ::init_pair(selected, COLOR_BLACK, COLOR_CYAN);
    ::init_pair(field, COLOR_BLACK, COLOR_WHITE);
}

attr_t attributesOf(Ink ink, bool isSelected, bool colour) {
    const bool isBesideRow = ink == Ink::scroll || ink == Ink::scrollTrack;
    if (!isSelected || isBesideRow) return colour ? colouredInk(ink) : plainInk(ink);
    // Without boldness: many terminals draw bold black in grey.
    if (colour) return coloured(selected);
    return A_REVERSE | (ink == Ink::faint || ink == Ink::quiet ? A_NORMAL : A_BOLD);
}

}  // namespace hosts::terminal::screen
