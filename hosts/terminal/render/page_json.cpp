// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/page_json.h"

namespace hosts::terminal {
namespace {

using nlohmann::json;

template <class T>
json orNull(const std::optional<T>& value) {
    return value ? json(*value) : json(nullptr);
}

// An image of the bundle goes by its name; an application's icon has none to tell.
json iconJson(const RowSnapshot& row) {
    if (!row.icon) return false;
    if (row.icon->file().empty()) return true;
    return row.icon->name();
}

json rowJson(const RowSnapshot& row) {
    return {{"label", row.label},     {"kind", kindName(row.kind)}, {"identifier", orNull(row.identifier)},
            {"key", orNull(row.key)}, {"value", orNull(row.value)}, {"enabled", row.enabled},
            {"checked", row.checked}, {"on", orNull(row.on)},       {"icon", iconJson(row)}};
}

json sectionJson(const SectionSnapshot& section) {
    json rows = json::array();
    for (const RowSnapshot& row : section.rows)
        rows.push_back(rowJson(row));
    return {{"header", orNull(section.header)}, {"footer", orNull(section.footer)}, {"rows", std::move(rows)}};
}

}  // namespace

json pageJson(const PageSnapshot& page) {
    json sections = json::array();
    for (const SectionSnapshot& section : page.sections)
        sections.push_back(sectionJson(section));
    return {{"class", page.className}, {"title", page.title}, {"sections", std::move(sections)}};
}

}  // namespace hosts::terminal
