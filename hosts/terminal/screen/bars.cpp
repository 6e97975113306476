// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/bars.h"

#include <algorithm>

#include "hosts/terminal/render/printable.h"

namespace hosts::terminal::screen {
namespace {

constexpr std::size_t hintGap = 2;

std::size_t hintColumns(const KeyHint& hint) {
    return columns(hint.key) + 1 + columns(hint.action);
}

}  // namespace

std::string TitleBar::backText(std::size_t width, const ScreenText& text) const {
    if (back.empty()) return {};
    return " " + std::string(text.glyphs().back) + " " + text.fitted(back, width / 3) + " ";
}

std::string TitleBar::rightButtonText(const ScreenText& text) const {
    return hasRightButton ? " h " + std::string(text.glyphs().heart) + " " : std::string();
}

// The title stands in the middle of the screen where it can, else in the middle of what is left.
Line TitleBar::compose(std::size_t width, const ScreenText& text) const {
    const std::string left = backText(width, text);
    const std::string right = rightButtonText(text);
    const std::size_t room = width - columns(left) - columns(right);
    const std::string middle = text.fitted(title, room);
    const std::size_t taken = columns(middle);
    const std::size_t centre = (width - taken) / 2;
    const bool fits = centre >= columns(left) && centre + taken + columns(right) <= width;
    const std::size_t start = fits ? centre : columns(left) + (room - taken) / 2;

    Line line;
    line.add(left, Ink::bar);
    line.addSpaces(start - columns(left), Ink::bar);
    line.add(middle, Ink::barTitle);
    line.addSpaces(width - columns(right) - start - taken, Ink::bar);
    line.add(right, Ink::bar);
    return line;
}

TitleBar::Part TitleBar::partAt(std::size_t column, std::size_t width, const ScreenText& text) const {
    if (column < columns(backText(width, text))) return Part::back;
    return column + columns(rightButtonText(text)) >= width ? Part::rightButton : Part::title;
}

Line keyLine(const std::vector<KeyHint>& hints, std::size_t width) {
    Line line;
    line.addSpaces(1, Ink::bar);
    std::size_t left = width - 1;
    for (const KeyHint& hint : hints) {
        const std::size_t taken = hintColumns(hint);
        if (taken > left) break;
        line.add(hint.key, Ink::barKey);
        line.add(" " + hint.action, Ink::bar);
        left -= taken;
        const std::size_t gap = std::min(hintGap, left);
        line.addSpaces(gap, Ink::bar);
        left -= gap;
    }
    line.addSpaces(left, Ink::bar);
    return line;
}

}  // namespace hosts::terminal::screen
