// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/picture.h"

#include "hosts/terminal/render/printable.h"

namespace hosts::terminal {

Line Line::of(std::size_t blanks, std::string text, Ink ink) {
    Line line;
    line.addSpaces(blanks);
    line.add(std::move(text), ink);
    return line;
}

void Line::add(std::string text, Ink ink) {
    if (!text.empty()) spans.push_back({std::move(text), ink});
}

void Line::addSpaces(std::size_t count, Ink ink) {
    add(std::string(count, ' '), ink);
}

std::size_t Line::columns() const {
    std::size_t sum = 0;
    for (const Span& span : spans)
        sum += terminal::columns(span.text);
    return sum;
}

std::string Line::text() const {
    std::string all;
    for (const Span& span : spans)
        all += span.text;
    return all;
}

void Picture::add(std::string text, Ink ink) {
    lines.emplace_back().add(std::move(text), ink);
}

}  // namespace hosts::terminal
