// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/list/specifier.h"
#include "platform/ui/button.h"
#include "platform/ui/index_path.h"
#include "platform/ui/table_view.h"
#include "platform/ui/view_controller.h"

namespace hosts {

class Defaults;

/// What a row's cell shows at a time, whoever draws it.
struct RowLook {
    enum class Kind { switchRow, link, item };

    /// What the row is called: the first text of its cell.
    std::string label;
    /// The further texts, which only a cell of a page's own making has.
    std::vector<std::string> details;
    Kind kind = Kind::item;
    std::shared_ptr<const platform::UIImage> icon;
    bool enabled = true;
    /// The state that the cell was last given with `setChecked:`.
    bool checked = false;
    /// Whether a mark on this row takes the mark from its fellows: one value of several, and no flag of many.
    bool isOneOfSeveral = false;
    /// A switch's state.
    std::optional<bool> on;
    /// Whether the row's setting differs from its default, where somebody has asked for that.
    bool isChanged = false;
    platform::UITableViewCellAccessoryType accessory = platform::UITableViewCellAccessoryType::none;
    /// In points: from the left edge to the label, from the label's end to the right edge, and the height.
    double labelInset = 0;
    double accessoryWidth = 0;
    double height = 0;

    bool operator==(const RowLook&) const = default;

    /// Whether the row says that it opens something: a link, or a cell of a page's own making that
    /// bears the same arrow.
    bool leadsOn() const;

    /// `defaults` tells whether the setting differs; null for nobody who asks.
    static RowLook of(const platform::UITableViewCell& cell, const Defaults* defaults = nullptr);
};

RowLook::Kind rowKind(const platform::PSSpecifier& row);
/// The setting that the row stands for a value of; nothing for a row that is no choice.
std::optional<std::string> choiceKeyOf(const platform::PSSpecifier& row);
/// The number that the row stands for; nothing for a row that is no choice.
std::optional<std::int64_t> choiceValueOf(const platform::PSSpecifier& row);
/// "switch", "link" or "item".
const char* kindName(RowLook::Kind kind);

/// A row as it stands on the screen.
struct RowSnapshot : RowLook {
    platform::NSIndexPath path;
    std::optional<std::string> identifier;
    /// A choice row's settings key and the number that it stands for.
    std::optional<std::string> key;
    std::optional<std::int64_t> value;
    std::shared_ptr<platform::UITableViewCell> cell;

    /// What the cell of the row at this path shows; a null cell shows nothing.
    static RowSnapshot of(platform::NSIndexPath path, std::shared_ptr<platform::UITableViewCell> cell,
                          const Defaults* defaults = nullptr);
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

/// The button that is the right-hand item of a page's bar; null where there is none.
platform::UIButton* rightButtonOf(platform::UIViewController& page);

/// Every text that a view and those in it show, in drawing order; of a view that says which of its parts tell what it
/// is about, the texts of those alone.
std::vector<std::string> textsIn(const platform::UIView& view);

}  // namespace hosts
