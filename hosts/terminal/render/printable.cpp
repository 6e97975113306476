// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/printable.h"

#include <algorithm>

namespace hosts::terminal {
namespace {

// A line always takes one.
constexpr std::size_t widestCharacter = 2;

}  // namespace

std::vector<std::string> wrapped(std::string_view line, std::size_t width) {
    width = std::max(width, widestCharacter);
    std::vector<std::string> lines;
    while (true) {
        const std::size_t fitting = fittingLength(line, width);
        if (fitting == line.size()) break;
        const std::size_t space = line.rfind(' ', fitting);
        const bool atSpace = space != line.npos && space > 0;
        lines.emplace_back(line.substr(0, atSpace ? space : fitting));
        line.remove_prefix(atSpace ? space + 1 : fitting);
    }
    lines.emplace_back(line);
    return lines;
}

}  // namespace hosts::terminal
