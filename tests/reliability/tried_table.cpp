// SPDX-License-Identifier: MIT
#include "tried_table.h"

#include <algorithm>
#include <numeric>
#include <sstream>

#include "tests/kit/document_tables.h"

namespace reliability_test {

namespace {

template <typename Lines, typename Member>
std::size_t total(const Lines& lines, Member member) {
    return std::accumulate(lines.begin(), lines.end(), std::size_t{0},
                           [member](std::size_t sum, const auto& line) { return sum + line.*member; });
}

}  // namespace

TriedTable::~TriedTable() {
    kit::addToTables(text());
}

void TriedTable::add(const std::string& line, Outcome outcome) {
    auto found = std::ranges::find(_lines, line, &Line::name);
    if (found == _lines.end()) found = _lines.insert(_lines.end(), Line{line});
    ++found->tried;
    found->isNew += outcome.isNew ? 1 : 0;
    found->lost += outcome.lost;
}

std::size_t TriedTable::tried() const {
    return total(_lines, &Line::tried);
}

std::size_t TriedTable::lost() const {
    return total(_lines, &Line::lost);
}

std::string TriedTable::text() const {
    std::ostringstream text;
    const auto addLine = [&](const Line& line) {
        text << "| " << line.name << " | " << line.tried << " | " << line.tried - line.isNew << " | " << line.isNew
             << " | " << line.lost << " |\n";
    };
    text << "**" << _title << "**\n\n| " << _firstColumn
         << " | times tried | old file stands | new file stands | settings lost |\n|---|--:|--:|--:|--:|\n";
    for (const Line& line : _lines)
        addLine(line);
    if (_lines.size() > 1) addLine({"*together*", tried(), total(_lines, &Line::isNew), lost()});
    text << '\n';
    return text.str();
}

}  // namespace reliability_test
