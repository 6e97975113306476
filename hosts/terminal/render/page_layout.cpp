// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/page_layout.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "hosts/terminal/render/printable.h"

namespace hosts::terminal {
namespace {

using LineKind = PageLayout::PageLine::Kind;

// Rows stand in from the titles of their sections, and what is said about rows in from the rows: even
// without colour nothing is taken for something else.
constexpr std::size_t titleIndent = 2;
constexpr std::size_t labelIndent = 4;
constexpr std::size_t detailIndent = 6;

// A row of the usual height shows one line of text; each further line makes it this much higher.
constexpr double textLineHeight = 20.5;

std::size_t linesOfHeight(double height) {
    const double more = (height - platform::UITableViewDelegate::defaultRowHeight) / textLineHeight;
    return more > 0 ? 1 + static_cast<std::size_t>(more) : 1;
}

std::tuple<std::size_t, std::size_t> order(platform::NSIndexPath path) {
    return {path.section, path.row};
}

// What stands at a row's right end. A greyed row says so in words, for those who see no colour.
std::string stateText(const RowSnapshot& row, const Glyphs& glyphs) {
    std::string state;
    if (row.on) state = *row.on ? glyphs.switchOn : glyphs.switchOff;
    if (row.leadsOn()) state = glyphs.link;
    if (row.enabled) return state;
    return state.empty() ? "(greyed)" : "(greyed) " + state;
}

Ink stateInk(const RowSnapshot& row) {
    if (!row.enabled) return Ink::faint;
    return row.on.value_or(false) ? Ink::good : Ink::quiet;
}

Line firstLine(const RowSnapshot& row, bool selected, std::size_t width, const ScreenText& text) {
    const std::string state = stateText(row, text.glyphs());
    const std::size_t stateRoom = state.empty() ? 0 : columns(state) + 1;
    const std::string label = text.fitted(row.label, width - std::min(width, labelIndent + stateRoom));

    Line line;
    line.selected = selected;
    line.add(selected ? std::string(text.glyphs().marker) : " ");
    line.add(row.isChanged ? std::string(text.glyphs().changed) : " ", row.isChanged ? Ink::strong : Ink::plain);
    // A switch says for itself what it is set to.
    const Ink markInk = !row.checked ? Ink::plain : row.enabled ? Ink::good : Ink::quiet;
    line.add(row.checked && !row.on ? std::string(text.glyphs().check) : " ", markInk);
    line.addSpaces(1);
    line.add(label, row.enabled ? Ink::plain : Ink::faint);
    line.addSpaces(width - labelIndent - columns(label) - columns(state));
    line.add(state, stateInk(row));
    return line;
}

std::string joinedLines(const std::vector<std::string>& texts) {
    std::string lines;
    for (std::size_t i = 0; i < texts.size(); ++i)
        lines += (i > 0 ? "\n" : "") + texts[i];
    return lines;
}

}  // namespace

std::vector<Line> rowLines(const RowSnapshot& row, bool selected, Size size, const ScreenText& text) {
    std::vector<Line> lines{firstLine(row, selected, size.width, text)};
    if (row.details.empty()) return lines;
    for (std::string& detail : text.firstLines(joinedLines(row.details), size.width - detailIndent, size.height - 1)) {
        Line& line = lines.emplace_back();
        line.selected = selected;
        line.addSpaces(detailIndent);
        line.add(std::move(detail), Ink::faint);
        line.addSpaces(size.width - std::min(size.width, line.columns()));
    }
    return lines;
}

PageLayout::PageLayout(platform::UIViewController& page, const ScreenText& text, std::size_t width)
    : PageLayout(text, width) {
    platform::UITableView* table = tableOfPage(page);
    if (!table || !table->dataSource()) return;
    const auto texts = table->tableHeaderView() ? textsIn(*table->tableHeaderView()) : std::vector<std::string>();
    // The first text names the page; the others tell of it.
    for (std::size_t i = 0; i < texts.size(); ++i)
        addText(texts[i], i == 0 ? Ink::strong : Ink::faint, true);
    const auto heightOf = [table](platform::NSIndexPath path) {
        auto* const delegate = table->delegate();
        return delegate ? linesOfHeight(delegate->tableView_heightForRowAtIndexPath(*table, path)) : 1;
    };
    platform::UITableViewDataSource& source = *table->dataSource();
    const std::size_t sections = source.numberOfSectionsInTableView(*table);
    for (std::size_t section = 0; section < sections; ++section) {
        addSection(source.tableView_titleForHeaderInSection(*table, section),
                   source.tableView_titleForFooterInSection(*table, section),
                   source.tableView_numberOfRowsInSection(*table, section), heightOf);
    }
}

void PageLayout::addText(std::string_view text, Ink ink, bool isCentred) {
    for (std::string& line : _text.lines(text, _width)) {
        const std::size_t indent = isCentred ? (_width - std::min(_width, columns(line))) / 2 : 0;
        addLine(LineKind::text, Line::of(indent, std::move(line), ink));
    }
}

void PageLayout::addSection(const std::optional<std::string>& title, const std::optional<std::string>& footer,
                            std::size_t rowCount, const HeightOf& heightOf) {
    const std::size_t section = _sectionCount++;
    if (!_lines.empty()) addLine(LineKind::text, {});
    if (title) addIndented(LineKind::groupTitle, *title, titleIndent, Ink::strong);
    for (std::size_t row = 0; row < rowCount; ++row) {
        const platform::NSIndexPath path{section, row};
        const std::size_t height = heightOf(path);
        _rows.push_back({path, _lines.size(), height});
        _lines.insert(_lines.end(), height, {LineKind::row, _rows.size() - 1});
    }
    if (footer) addIndented(LineKind::footer, *footer, detailIndent, Ink::faint);
}

void PageLayout::addIndented(PageLine::Kind kind, std::string_view text, std::size_t indent, Ink ink) {
    for (std::string& line : _text.lines(text, _width - indent))
        addLine(kind, Line::of(indent, std::move(line), ink));
}

void PageLayout::addLine(PageLine::Kind kind, Line line) {
    _lines.push_back({kind, _texts.size()});
    _texts.push_back(std::move(line));
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

}  // namespace hosts::terminal
