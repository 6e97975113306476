// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/page_layout.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "hosts/session/page_snapshot.h"

namespace hosts::terminal::screen {
namespace {

constexpr std::size_t groupTitleIndent = 2;
constexpr std::size_t footerIndent = 4;

// A row of the usual height shows one line of text; each further line makes it this much higher.
constexpr double textLineHeight = 20.5;

std::size_t linesOfHeight(double height) {
    const double more = (height - platform::UITableViewDelegate::defaultRowHeight) / textLineHeight;
    return more > 0 ? 1 + static_cast<std::size_t>(more) : 1;
}

std::tuple<std::size_t, std::size_t> order(platform::NSIndexPath path) {
    return {path.section, path.row};
}

std::string indented(std::size_t indent, const std::string& text) {
    return std::string(indent, ' ') + text;
}

}  // namespace

PageLayout::PageLayout(platform::UIViewController& page, const ScreenText& text, std::size_t width) {
    platform::UITableView* table = tableOfPage(page);
    if (!table || !table->dataSource()) return;
    addHeaderView(*table, text, width);
    const std::size_t sections = table->dataSource()->numberOfSectionsInTableView(*table);
    for (std::size_t section = 0; section < sections; ++section)
        addSection(*table, section, text, width);
}

// The first text names the page; the others tell of it.
void PageLayout::addHeaderView(platform::UITableView& table, const ScreenText& text, std::size_t width) {
    if (!table.tableHeaderView()) return;
    auto kind = PageLine::Kind::pageName;
    for (const std::string& part : textsIn(*table.tableHeaderView())) {
        for (std::string& line : text.lines(part, width))
            addText(kind, std::move(line));
        kind = PageLine::Kind::pageDetail;
    }
}

void PageLayout::addSection(platform::UITableView& table, std::size_t section, const ScreenText& text,
                            std::size_t width) {
    platform::UITableViewDataSource& source = *table.dataSource();
    if (!_lines.empty()) addBlank();
    if (const auto title = source.tableView_titleForHeaderInSection(table, section)) {
        for (const std::string& line : text.lines(*title, width - groupTitleIndent))
            addText(PageLine::Kind::groupTitle, indented(groupTitleIndent, line));
    }
    const std::size_t rows = source.tableView_numberOfRowsInSection(table, section);
    for (std::size_t row = 0; row < rows; ++row)
        addRow(table, {section, row});
    if (const auto footer = source.tableView_titleForFooterInSection(table, section)) {
        for (const std::string& line : text.lines(*footer, width - footerIndent))
            addText(PageLine::Kind::footer, indented(footerIndent, line));
    }
}

void PageLayout::addRow(platform::UITableView& table, platform::NSIndexPath path) {
    const double height = table.delegate() ? table.delegate()->tableView_heightForRowAtIndexPath(table, path)
                                           : platform::UITableViewDelegate::defaultRowHeight;
    const std::size_t lines = linesOfHeight(height);
    const std::size_t number = _rows.size();
    _rows.push_back({path, _lines.size(), lines});
    _lines.insert(_lines.end(), lines, {PageLine::Kind::row, number});
}

void PageLayout::addBlank() {
    _lines.emplace_back();
}

void PageLayout::addText(PageLine::Kind kind, std::string text) {
    _lines.push_back({kind, _texts.size()});
    _texts.push_back(std::move(text));
}

std::optional<std::size_t> PageLayout::rowAtPath(platform::NSIndexPath path) const {
    const auto found = std::ranges::lower_bound(_rows, order(path), {}, [](const Row& row) { return order(row.path); });
    if (found == _rows.end() || found->path != path) return std::nullopt;
    return static_cast<std::size_t>(std::distance(_rows.begin(), found));
}

std::optional<std::size_t> PageLayout::rowAtOrBelow(std::size_t line) const {
    if (_rows.empty()) return std::nullopt;
    const auto lastLine = [](const Row& row) { return row.line + row.height - 1; };
    const auto found = std::ranges::lower_bound(_rows, line, {}, lastLine);
    return std::min(static_cast<std::size_t>(std::distance(_rows.begin(), found)), _rows.size() - 1);
}

PageLayout::Surroundings PageLayout::surroundings(std::size_t row) const {
    Surroundings seen{_rows[row].line, _rows[row].line + _rows[row].height};
    const auto isTitle = [this](std::size_t line) { return _lines[line].kind == PageLine::Kind::groupTitle; };
    const auto isFooter = [this](std::size_t line) { return _lines[line].kind == PageLine::Kind::footer; };
    while (seen.first > 0 && isTitle(seen.first - 1))
        --seen.first;
    while (seen.end < _lines.size() && isFooter(seen.end))
        ++seen.end;
    if (row == 0) seen.first = 0;
    if (row + 1 == _rows.size()) seen.end = _lines.size();
    return seen;
}

}  // namespace hosts::terminal::screen
