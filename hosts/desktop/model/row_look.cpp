// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/row_look.h"

#include <QStringList>

#include "platform/list/table_cell.h"

namespace hosts::desktop {
namespace {

using Accessory = platform::UITableViewCellAccessoryType;

void collectTexts(const platform::UIView& view, QStringList& texts) {
    if (auto* label = dynamic_cast<const platform::UILabel*>(&view)) {
        if (auto text = label->text()) texts.append(QString::fromStdString(*text).replace(u'\n', u' '));
    }
    for (const auto& part : view.subviews())
        collectTexts(*part, texts);
}

}  // namespace

QString textsIn(const platform::UIView& view) {
    QStringList texts;
    collectTexts(view, texts);
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
        look.label = textsIn(cell);
    }
    return look;
}

}  // namespace hosts::desktop
