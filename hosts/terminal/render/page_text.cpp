// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/page_text.h"

#include <limits>
#include <string_view>

#include "hosts/terminal/render/page_layout.h"

namespace hosts::terminal {
namespace {

// The escape sequences of ECMA-48 that we use.
std::string_view sequenceOf(Ink ink) {
    switch (ink) {
        case Ink::strong:
            return "\x1b[1m";
        case Ink::faint:
            return "\x1b[2m";
        case Ink::good:
            return "\x1b[32m";
        default:
            return {};
    }
}

std::string printedLine(const Line& line, bool colour) {
    std::string printed;
    for (const Span& span : line.spans) {
        const std::string_view sequence = colour ? sequenceOf(span.ink) : std::string_view();
        printed.append(sequence).append(span.text).append(sequence.empty() ? "" : "\x1b[0m");
    }
    printed.erase(printed.find_last_not_of(' ') + 1);
    return printed + '\n';
}

void addHead(PageLayout& layout, platform::UIViewController& page, const std::string& title) {
    layout.addText(title, Ink::strong);
    platform::UITableView* table = tableOfPage(page);
    if (!table || !table->tableHeaderView()) return;
    for (const std::string& part : textsIn(*table->tableHeaderView())) {
        if (part != title) layout.addText(part, Ink::faint);
    }
}

}  // namespace

std::string pageText(platform::UIViewController& page, const PageSnapshot& snapshot, const TextStyle& style) {
    constexpr std::size_t anyHeight = std::numeric_limits<std::size_t>::max();
    const ScreenText text = ScreenText::forPrinting(style);
    PageLayout layout(text, style.width);
    addHead(layout, page, snapshot.title);
    std::vector<Line> rows;
    for (const SectionSnapshot& section : snapshot.sections) {
        layout.addSection(section.header, section.footer, section.rows.size(), [&](platform::NSIndexPath path) {
            const std::vector<Line> lines = rowLines(section.rows[path.row], false, {style.width, anyHeight}, text);
            rows.insert(rows.end(), lines.begin(), lines.end());
            return lines.size();
        });
    }
    std::string printed;
    auto row = rows.begin();
    for (std::size_t number = 0; number < layout.lineCount(); ++number) {
        const PageLayout::PageLine& line = layout.line(number);
        const bool isRow = line.kind == PageLayout::PageLine::Kind::row;
        printed += printedLine(isRow ? *row++ : layout.textOf(line), style.colour);
    }
    return printed;
}

}  // namespace hosts::terminal
