// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ui/index_path.h"
#include "platform/ui/table_view.h"
#include "platform/ui/view_controller.h"

namespace hosts {

/// A row as it stands on the screen.
struct RowSnapshot {
    enum class Kind { switchRow, link, item };

    platform::NSIndexPath path;
    std::string label;
    Kind kind = Kind::item;
    std::optional<std::string> identifier;
    /// A choice row's settings key and the number that it stands for.
    std::optional<std::string> key;
    std::optional<std::int64_t> value;
    bool enabled = true;
    bool checked = false;
    /// A switch's state.
    std::optional<bool> on;
    std::shared_ptr<const platform::UIImage> icon;
    std::shared_ptr<platform::UITableViewCell> cell;

    /// Whether the row says that it opens something: a link, or a cell of a page's own making that
    /// bears the same arrow.
    bool leadsOn() const;

    /// What the cell of the row at this path shows; a null cell shows nothing.
    static RowSnapshot of(platform::NSIndexPath path, std::shared_ptr<platform::UITableViewCell> cell);
};

struct SectionSnapshot {
    std::optional<std::string> header;
    std::optional<std::string> footer;
    std::vector<RowSnapshot> rows;
};

/// What a page shows, produced cell by cell from the top, as on a screen tall enough for all of it.
struct PageSnapshot {
    std::string className;
    std::string title;
    std::vector<SectionSnapshot> sections;

    static PageSnapshot of(platform::UIViewController& page);
};

/// The table that makes up a page; null for a page that is none.
platform::UITableView* tableOfPage(platform::UIViewController& page);

/// Every text that a view and those in it show, in drawing order.
std::vector<std::string> textsIn(const platform::UIView& view);

}  // namespace hosts
