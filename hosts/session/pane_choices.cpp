// SPDX-License-Identifier: MIT
#include "hosts/session/pane_choices.h"

#include <algorithm>
#include <set>
#include <utility>

#include "hosts/session/memory_files.h"
#include "hosts/session/page_tour.h"
#include "hosts/session/pane_rows.h"
#include "hosts/session/printable.h"
#include "platform/foundation/ascii.h"

namespace hosts {
namespace {

using platform::Problem;
using platform::Result;

PaneChoices& choicesFor(std::vector<PaneChoices>& all, const std::string& key) {
    const auto known = std::ranges::find(all, key, &PaneChoices::key);
    return known == all.end() ? all.emplace_back(PaneChoices{key, {}, false}) : *known;
}

}  // namespace

bool PaneChoices::standFor(std::int64_t number) const {
    if (std::ranges::find(rows, number, &Row::value) != rows.end()) return true;
    std::int64_t bits = 0;
    for (const Row& row : rows)
        bits |= row.value;
    return areFlags && number != 0 && (number & ~bits) == 0;
}

Result<std::optional<std::int64_t>> PaneChoices::numberNamed(std::string_view text) const {
    std::int64_t number = 0;
    std::size_t named = 0;
    std::string_view unnamed;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find('+'), rest.size());
        const std::string_view name = platform::trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        const auto row =
            std::ranges::find_if(rows, [name](const Row& each) { return platform::equalInAnyCase(each.label, name); });
        if (row == rows.end()) {
            unnamed = name;
        } else {
            number |= row->value;
            ++named;
        }
    }
    if (named == 0) return std::optional<std::int64_t>();
    if (!unnamed.empty()) return Problem{.reason = inQuotes(unnamed) + " is no choice of " + inQuotes(key)};
    if (named > 1 && !areFlags) return Problem{.reason = "choices of " + inQuotes(key) + " do not hold together"};
    return std::optional(number);
}

std::string PaneChoices::numbers() const {
    std::set<std::int64_t> values;
    for (const Row& row : rows)
        values.insert(row.value);
    std::string text;
    for (const std::int64_t value : values)
        text += (text.empty() ? "" : value == *values.rbegin() ? " or " : ", ") + std::to_string(value);
    return areFlags ? text + ", or a sum of these" : text;
}

std::string PaneChoices::names() const {
    std::string text;
    for (const Row& row : rows)
        text += (text.empty() ? "" : ", ") + std::to_string(row.value) + " (" + row.label + ")";
    return areFlags ? text + ", or several with + between" : text;
}

std::vector<PaneChoices> choicesOfPane(OpenedPhone& opened) {
    return choicesShown(opened, MemoryFiles());
}

std::vector<PaneChoices> choicesShown(OpenedPhone& opened, const platform::FileSystem& files) {
    std::vector<PaneChoices> all;
    seeEveryPage(opened, files, [&](const std::vector<std::string>& titles, platform::UIViewController& page) {
        for (PaneRow& row : rowsOfPage(titles, page)) {
            if (!row.key || !row.value) continue;
            PaneChoices& choices = choicesFor(all, *row.key);
            choices.rows.push_back({std::move(row.label), *row.value});
            choices.areFlags = row.isFlag;
        }
    });
    return all;
}

}  // namespace hosts
