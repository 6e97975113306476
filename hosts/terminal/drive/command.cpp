// SPDX-License-Identifier: MIT
#include "hosts/terminal/drive/command.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "hosts/session/page_snapshot.h"
#include "hosts/session/row_finder.h"

namespace hosts::terminal {
namespace {

using nlohmann::json;
using platform::NSIndexPath;
using platform::Problem;
using platform::Result;

constexpr std::array<std::string_view, 5> commandFields{"do", "row", "on", "key", "result"};
constexpr std::array<std::string_view, 2> rowFields{"section", "row"};

bool isField(int depth, const json& name) {
    const auto isName = [&name](std::string_view field) { return name == field; };
    return depth == 1 ? std::ranges::any_of(commandFields, isName) : std::ranges::any_of(rowFields, isName);
}

bool isKept(int depth, json::parse_event_t event, const json& parsed) {
    switch (event) {
        case json::parse_event_t::key:
            return isField(depth, parsed);
        case json::parse_event_t::object_start:
            return depth < 2;
        case json::parse_event_t::array_start:
            return false;
        default:
            return true;
    }
}

Result<NSIndexPath> findByLabel(platform::UIViewController& page, const std::string& label) {
    const auto found = rowsLabelled(page, label);
    if (found.size() == 1) return found.front();
    if (found.empty()) return Problem{.reason = "the page shows no row '" + label + "'"};
    return Problem{.reason = "the page shows " + std::to_string(found.size()) + " rows '" + label +
                             "': name one by its section and row"};
}

bool hasIndex(const json& reference, const char* name) {
    return reference.contains(name) && reference[name].is_number_unsigned();
}

Result<NSIndexPath> findByIndex(platform::UIViewController& page, const json& reference) {
    const NSIndexPath path{reference["section"].get<std::size_t>(), reference["row"].get<std::size_t>()};
    platform::UITableView* table = tableOfPage(page);
    if (table && table->hasRowAtIndexPath(path)) return path;
    return Problem{.reason = "the page has no row " + std::to_string(path.row) + " in section " +
                             std::to_string(path.section)};
}

}  // namespace

json readCommand(const std::string& line) {
    json command = json::parse(line, isKept, false);
    return command.is_object() ? command : json(nullptr);
}

Result<NSIndexPath> findRow(platform::UIViewController& page, const json& command) {
    const auto reference = command.find("row");
    if (reference != command.end() && reference->is_string()) {
        return findByLabel(page, reference->get<std::string>());
    }
    if (reference != command.end() && hasIndex(*reference, "section") && hasIndex(*reference, "row")) {
        return findByIndex(page, *reference);
    }
    return Problem{.reason = "\"row\" takes a label or {\"section\":S,\"row\":R}"};
}

}  // namespace hosts::terminal
