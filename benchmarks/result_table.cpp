// SPDX-License-Identifier: MIT
#include "benchmarks/result_table.h"

#include <algorithm>
#include <cstdio>

namespace benchmarks {
namespace {

constexpr std::size_t columns = std::tuple_size_v<ResultTable::Row>;
using Widths = std::array<std::size_t, columns>;

const ResultTable::Row titles = {"job", "ours", "peer", "peer", "ratio", "reach", "holds"};
constexpr std::array<bool, columns> isNumber = {false, true, false, true, true, false, false};

std::string withUnit(double amount, const char* form) {
    char text[32];
    std::snprintf(text, sizeof text, form, amount);
    return text;
}

std::string lineText(const ResultTable::Row& row, const Widths& widths) {
    std::string line = "|";
    for (std::size_t column = 0; column < columns; ++column) {
        const std::string padding(widths[column] - row[column].size(), ' ');
        line += " " + (isNumber[column] ? padding + row[column] : row[column] + padding) + " |";
    }
    return line + "\n";
}

std::string ruleText(const Widths& widths) {
    std::string line = "|";
    for (std::size_t column = 0; column < columns; ++column)
        line += std::string(widths[column] + 1, '-') + (isNumber[column] ? ":|" : "-|");
    return line + "\n";
}

}  // namespace

std::string ResultTable::text() const {
    Widths widths;
    for (std::size_t column = 0; column < columns; ++column) {
        widths[column] = titles[column].size();
        for (const Row& row : _rows)
            widths[column] = std::max(widths[column], row[column].size());
    }
    std::string text = lineText(titles, widths) + ruleText(widths);
    for (const Row& row : _rows)
        text += lineText(row, widths);
    return text;
}

std::string timeText(double nanoseconds) {
    if (nanoseconds < 1e4) return withUnit(nanoseconds, "%.0f ns");
    if (nanoseconds < 1e6) return withUnit(nanoseconds / 1e3, "%.1f us");
    return withUnit(nanoseconds / 1e6, nanoseconds < 1e8 ? "%.2f ms" : "%.1f ms");
}

std::string sizeText(double bytes) {
    if (bytes < 1e6) return withUnit(bytes / 1e3, "%.0f KB");
    return withUnit(bytes / 1e6, "%.1f MB");
}

}  // namespace benchmarks
