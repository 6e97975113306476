// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/row_lines.h"

#include <algorithm>

#include "hosts/terminal/render/printable.h"

namespace hosts::terminal::screen {
namespace {

constexpr std::size_t labelIndent = 4;

// What stands at a row's right end. A greyed row says so in words, for those who see no colour.
std::string stateText(const RowSnapshot& row, const Glyphs& glyphs) {
    std::string state;
    if (row.on) state = *row.on ? glyphs.switchOn : glyphs.switchOff;
    if (row.leadsOn()) state = glyphs.link;
    if (row.enabled) return state;
    return state.empty() ? "(greyed)" : "(greyed) " + state;
}

Ink stateInk(const RowSnapshot& row) {
    return row.enabled && row.on && *row.on ? Ink::good : Ink::faint;
}

Line firstLine(const RowSnapshot& row, bool selected, std::size_t width, const ScreenText& text) {
    const std::string state = stateText(row, text.glyphs());
    const std::size_t stateRoom = state.empty() ? 0 : columns(state) + 1;
    const std::size_t labelRoom = width > labelIndent + stateRoom + 1 ? width - labelIndent - stateRoom - 1 : 0;
    const std::string label = text.fitted(row.label, labelRoom);
    // A switch says for itself what it is set to.
    const bool marked = row.checked && !row.on;

    Line line;
    line.selected = selected;
    line.add(selected ? std::string(text.glyphs().marker) : " ");
    line.addSpaces(1);
    line.add(marked ? std::string(text.glyphs().check) : " ", row.enabled ? Ink::good : Ink::faint);
    line.addSpaces(1);
    line.add(label, row.enabled ? Ink::plain : Ink::faint);
    line.addSpaces(width - labelIndent - columns(label) - columns(state) - 1);
    line.add(state, stateInk(row));
    line.addSpaces(1);
    return line;
}

// The texts of a cell of a page's own making, after the one that it is named by.
std::vector<std::string> detailLines(const RowSnapshot& row, Size size, const ScreenText& text) {
    std::string details;
    const std::vector<std::string> texts = row.cell ? textsIn(*row.cell) : std::vector<std::string>();
    for (std::size_t i = 1; i < texts.size(); ++i)
        details += (i > 1 ? "\n" : "") + texts[i];
    return details.empty() ? std::vector<std::string>() : text.firstLines(details, size.width, size.height);
}

Line detailLine(const std::string& detail, bool selected, std::size_t width) {
    Line line;
    line.selected = selected;
    line.addSpaces(labelIndent);
    line.add(detail, Ink::faint);
    line.addSpaces(width - std::min(width, line.columns()));
    return line;
}

}  // namespace

std::vector<Line> rowLines(const RowSnapshot& row, bool selected, Size size, const ScreenText& text) {
    std::vector<Line> lines{firstLine(row, selected, size.width, text)};
    const Size room{size.width - labelIndent - 1, size.height - 1};
    for (const std::string& detail : detailLines(row, room, text))
        lines.push_back(detailLine(detail, selected, size.width));
    while (lines.size() < size.height)
        lines.push_back(detailLine({}, selected, size.width));
    return lines;
}

}  // namespace hosts::terminal::screen
