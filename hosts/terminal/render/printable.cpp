// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/printable.h"

#include <algorithm>

namespace hosts::terminal {
namespace {

// No character is wider, so that a line always takes one.
constexpr std::size_t leastWidth = 2;

void wrapLine(std::string_view line, std::size_t width, std::vector<std::string>& lines) {
    while (true) {
        const std::size_t fitting = fittingLength(line, width);
        if (fitting == line.size()) break;
        const std::size_t space = line.rfind(' ', fitting);
        const bool atSpace = space != line.npos && space > 0;
        lines.emplace_back(line.substr(0, atSpace ? space : fitting));
        line.remove_prefix(atSpace ? space + 1 : fitting);
    }
    lines.emplace_back(line);
}

}  // namespace

std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    while (true) {
        const std::size_t end = text.find('\n');
        wrapLine(text.substr(0, end), std::max(width, leastWidth), lines);
        if (end == text.npos) return lines;
        text.remove_prefix(end + 1);
    }
}

}  // namespace hosts::terminal
