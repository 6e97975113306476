// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/button_row.h"

#include "hosts/terminal/render/printable.h"

namespace hosts::terminal::screen {
namespace {

constexpr std::size_t indent = 2;
constexpr std::size_t gap = 2;

// The brackets tell of the focus where there is no colour.
std::string drawn(const std::string& label, bool isFocused) {
    return isFocused ? "[>" + label + "<]" : "[ " + label + " ]";
}

}  // namespace

Line ButtonRow::compose(std::optional<std::size_t> focused) const {
    Line line;
    line.addSpaces(indent);
    for (std::size_t i = 0; i < _labels.size(); ++i) {
        if (i > 0) line.addSpaces(gap);
        line.add(drawn(_labels[i], i == focused), i == focused ? Ink::focusedButton : Ink::button);
    }
    return line;
}

std::optional<std::size_t> ButtonRow::buttonAt(std::size_t column) const {
    std::size_t start = indent;
    for (std::size_t i = 0; i < _labels.size(); ++i) {
        const std::size_t end = start + columns(drawn(_labels[i], false));
        if (column >= start && column < end) return i;
        start = end + gap;
    }
    return std::nullopt;
}

}  // namespace hosts::terminal::screen
