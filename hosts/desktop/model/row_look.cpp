// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/row_look.h"

#include <QStringList>

#include "hosts/session/page_snapshot.h"
#include "platform/list/table_cell.h"

namespace hosts::desktop {
namespace {

using Accessory = platform::UITableViewCellAccessoryType;

}  // namespace

QString spokenTexts(const platform::UIView& view) {
    QStringList texts;
    for (const std::string& text : textsIn(view))
        texts.append(QString::fromStdString(text).replace(u'\n', u' '));
    return texts.join(QStringLiteral(", "));
}

RowLook RowLook::of(const platform::UITableViewCell& cell) {
    RowLook look;
    look.icon = {cell.imageView()->image};
    look.isChecked = cell.accessoryType == Accessory::checkmark;
    look.hasDisclosure = cell.accessoryType == Accessory::disclosureIndicator;
    look.labelInset = cell.textLabel()->frame().x;
    look.height = cell.frame().height;
    if (auto* listCell = dynamic_cast<const platform::PSTableCell*>(&cell)) {
        look.label = QString::fromStdString(cell.textLabel()->text().value_or(std::string()));
        look.isEnabled = listCell->isCellEnabled();
        look.isChecked = listCell->isChecked();
        look.isOn = listCell->isOn();
    } else {
        look.label = spokenTexts(cell);
    }
    return look;
}

}  // namespace hosts::desktop
