// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "hosts/desktop/drawing/view_handle.h"
#include "platform/ui/table_view_cell.h"

namespace hosts::desktop {

/// What a row's cell shows at a time.
struct RowLook {
    QString label;
    ImageHandle icon;
    bool isEnabled = true;
    bool isChecked = false;
    /// A switch's state.
    bool isOn = false;
    bool hasDisclosure = false;
    /// Where the label begins, in points from the row's left edge.
    double labelInset = 0;
    double height = 0;
    bool operator==(const RowLook&) const = default;

    static RowLook of(const platform::UITableViewCell& cell);
};

/// All texts in a view on one line, from the first drawn to the last, for those who cannot see it.
QString spokenTexts(const platform::UIView& view);

}  // namespace hosts::desktop
