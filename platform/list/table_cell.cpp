// SPDX-License-Identifier: MIT
#include "platform/list/table_cell.h"

namespace platform {
namespace {

// The platform's margin to the right of the switch, and this much between it and the label.
constexpr double switchGap = 8;

UITableViewCellAccessoryType restingAccessory(const PSSpecifier& specifier) {
    return specifier.cellType() == PSCellType::link ? UITableViewCellAccessoryType::disclosureIndicator
                                                    : UITableViewCellAccessoryType::none;
}

}  // namespace

PSTableCell::PSTableCell(std::shared_ptr<PSSpecifier> specifier)
    : UITableViewCell(UITableViewCellStyle::standard, {}), _specifier(std::move(specifier)) {
    accessoryType = restingAccessory(*_specifier);
    refreshCellContentsWithSpecifier(*_specifier);
}

void PSTableCell::setChecked(bool checked) {
    _checked = checked;
    accessoryType = checked ? UITableViewCellAccessoryType::checkmark : restingAccessory(*_specifier);
}

void PSTableCell::refreshCellContentsWithSpecifier(PSSpecifier& specifier) {
    textLabel()->setText(specifier.textForKey(PSPropertyKey::label).value_or(specifier.name()));
    imageView()->image = specifier.iconImage();
    _cellEnabled = specifier.isEnabled();
    if (isSwitch()) _on = specifier.getter() && boolValue(specifier.getter()(specifier));
}

bool PSTableCell::userMovedSwitch(bool on) {
    if (!isSwitch() || !_cellEnabled) return false;
    _on = on;
    if (_specifier->setter()) _specifier->setter()(on, *_specifier);
    return true;
}

double PSTableCell::accessoryWidth() const {
    return isSwitch() ? switchWidth + margin + switchGap : UITableViewCell::accessoryWidth();
}

}  // namespace platform
