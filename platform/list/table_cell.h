// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "platform/foundation/export.h"
#include "platform/list/specifier.h"
#include "platform/ui/table_view_cell.h"

namespace platform {

/// The cell of a list page's row. What it shows is set when it is produced; only its checkmark and a
/// switch's state change while it is on the screen.
class TRIVEL3_PLATFORM_EXPORT PSTableCell : public UITableViewCell {
public:
    /// Of a switch, in points.
    static constexpr double switchWidth = 51;

    explicit PSTableCell(std::shared_ptr<PSSpecifier> specifier);
    const char* className() const override { return "PSTableCell"; }

    const std::shared_ptr<PSSpecifier>& specifier() const { return _specifier; }

    /// Shows or hides the checkmark.
    void setChecked(bool checked);
    bool isChecked() const { return _checked; }

    /// Greyed cells cannot be used.
    bool isCellEnabled() const { return _cellEnabled; }
    /// A switch's state; false for any other cell.
    bool isOn() const { return _on; }
    bool isSwitch() const { return _specifier->cellType() == PSCellType::switchCell; }

    /// Takes label, icon, greying and a switch's state from the row anew. The switch's state comes
    /// from the row's getter, by truth value.
    void refreshCellContentsWithSpecifier(PSSpecifier& specifier);

    /// What a host calls when the user has moved the switch: hands the state to the row's setter.
    /// False, with nothing done, when the cell is greyed or no switch.
    bool userMovedSwitch(bool on);

    double accessoryWidth() const override;

private:
    std::shared_ptr<PSSpecifier> _specifier;
    bool _checked = false;
    bool _cellEnabled = true;
    bool _on = false;
};

}  // namespace platform
