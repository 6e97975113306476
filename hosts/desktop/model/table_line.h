// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "hosts/desktop/model/row_look.h"
#include "platform/list/list_controller.h"
#include "platform/ui/table_view.h"

namespace hosts::desktop {

/// A row whose cell is on the screen.
struct LiveRow {
    std::shared_ptr<platform::UITableViewCell> cell;
    RowLook look;
    int revision = 0;
};

/// One line of a table as it is drawn from top to bottom: what stands above a section's rows, a row,
/// or what stands below them.
struct TableLine {
    enum class Kind { header, switchRow, link, item, view, footer };

    Kind kind = Kind::item;
    platform::NSIndexPath path;
    /// The row or group row that the line stands for; null where the page knows no such thing.
    const platform::PSSpecifier* specifier = nullptr;
    /// Tells this line from all others of its table, those that are gone included; 0 before the table
    /// has taken it in.
    int id = 0;
    /// Whether the last change of what the line shows is to be seen happening.
    bool isAnimated = false;
    std::unique_ptr<LiveRow> live;

    bool isRow() const { return kind != Kind::header && kind != Kind::footer; }
    /// Whether both stand for the same thing, wherever that is now.
    bool standsForSameAs(const TableLine& other) const;
};

/// The lines of the table as it is now. `list` is the page when it is a list of rows, else null.
std::vector<TableLine> tableLines(platform::UITableView& table, const platform::PSListController* list);

}  // namespace hosts::desktop
