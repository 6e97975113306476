// SPDX-License-Identifier: MIT
#include "hosts/terminal/drive/row_reference.h"

#include "hosts/session/page_snapshot.h"
#include "hosts/session/row_finder.h"

namespace hosts::terminal {
namespace {

using nlohmann::json;
using platform::NSIndexPath;

std::optional<NSIndexPath> findByLabel(platform::UIViewController& page, const std::string& label, std::string& error) {
    const auto found = rowsLabelled(page, label);
    if (found.size() == 1) return found.front();
    error = found.empty() ? "the page shows no row '" + label + "'"
                          : "the page shows " + std::to_string(found.size()) + " rows '" + label +
                                "': name one by its section and row";
    return std::nullopt;
}

bool hasIndex(const json& reference, const char* name) {
    return reference.contains(name) && reference[name].is_number_unsigned();
}

std::optional<NSIndexPath> findByIndex(platform::UIViewController& page, const json& reference, std::string& error) {
    const NSIndexPath path{reference["section"].get<std::size_t>(), reference["row"].get<std::size_t>()};
    platform::UITableView* table = tableOfPage(page);
    if (table && table->hasRowAtIndexPath(path)) return path;
    error = "the page has no row " + std::to_string(path.row) + " in section " + std::to_string(path.section);
    return std::nullopt;
}

}  // namespace

std::optional<NSIndexPath> findRow(platform::UIViewController& page, const json& reference, std::string& error) {
    if (reference.is_string()) return findByLabel(page, reference.get<std::string>(), error);
    if (reference.is_object() && hasIndex(reference, "section") && hasIndex(reference, "row")) {
        return findByIndex(page, reference, error);
    }
    error = "\"row\" takes a label or {\"section\":S,\"row\":R}";
    return std::nullopt;
}

}  // namespace hosts::terminal
