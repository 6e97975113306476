// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/table_line.h"

namespace hosts::desktop {
namespace {

using Kind = TableLine::Kind;

Kind kindOf(const platform::PSSpecifier* row) {
    if (!row) return Kind::view;
    switch (row->cellType()) {
        case platform::PSCellType::switchCell:
            return Kind::switchRow;
        case platform::PSCellType::link:
            return Kind::link;
        case platform::PSCellType::group:
        case platform::PSCellType::listItem:
            break;
    }
    return Kind::item;
}

TableLine makeLine(Kind kind, platform::NSIndexPath path, const platform::PSSpecifier* specifier) {
    TableLine line;
    line.kind = kind;
    line.path = path;
    line.specifier = specifier;
    return line;
}

}  // namespace

bool TableLine::standsForSameAs(const TableLine& other) const {
    if (kind != other.kind || specifier != other.specifier) return false;
    return specifier != nullptr || path == other.path;
}

std::vector<TableLine> tableLines(platform::UITableView& table, const platform::PSListController* list) {
    std::vector<TableLine> lines;
    platform::UITableViewDataSource* source = table.dataSource();
    if (!source) return lines;
    const std::size_t sections = source->numberOfSectionsInTableView(table);
    for (std::size_t section = 0; section < sections; ++section) {
        const platform::PSSpecifier* group = list ? list->groupSpecifier(section).get() : nullptr;
        lines.push_back(makeLine(Kind::header, {section, 0}, group));
        const std::size_t rows = source->tableView_numberOfRowsInSection(table, section);
        for (std::size_t row = 0; row < rows; ++row) {
            const platform::NSIndexPath path{section, row};
            const platform::PSSpecifier* specifier = list ? list->specifierAtIndexPath(path).get() : nullptr;
            lines.push_back(makeLine(kindOf(specifier), path, specifier));
        }
        lines.push_back(makeLine(Kind::footer, {section, rows}, group));
    }
    return lines;
}

}  // namespace hosts::desktop
