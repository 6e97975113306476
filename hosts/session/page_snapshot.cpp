// SPDX-License-Identifier: MIT
#include "hosts/session/page_snapshot.h"

#include "platform/list/table_cell.h"
#include "platform/ui/label.h"

namespace hosts {
namespace {

// How a cell of a page's own is named.
std::string firstText(const platform::UIView& view) {
    const std::vector<std::string> texts = textsIn(view);
    return texts.empty() ? std::string() : texts.front();
}

void collectTexts(const platform::UIView& view, std::vector<std::string>& texts) {
    if (auto* label = dynamic_cast<const platform::UILabel*>(&view)) {
        if (auto text = label->text()) texts.push_back(*std::move(text));
    }
    for (const auto& part : view.subviews())
        collectTexts(*part, texts);
}

std::shared_ptr<const platform::UIImage> firstImage(const platform::UIView& view) {
    if (auto* picture = dynamic_cast<const platform::UIImageView*>(&view)) return picture->image;
    for (const auto& part : view.subviews()) {
        if (auto image = firstImage(*part)) return image;
    }
    return nullptr;
}

RowSnapshot::Kind rowKind(platform::PSCellType type) {
    switch (type) {
        case platform::PSCellType::switchCell:
            return RowSnapshot::Kind::switchRow;
        case platform::PSCellType::link:
            return RowSnapshot::Kind::link;
        case platform::PSCellType::group:
        case platform::PSCellType::listItem:
            break;
    }
    return RowSnapshot::Kind::item;
}

void describeChoice(RowSnapshot& row, const platform::PSSpecifier& specifier) {
    const platform::Dictionary* info = specifier.userInfo() ? specifier.userInfo()->dictionary() : nullptr;
    if (!info) return;
    const platform::Value* key = info->find("identifier");
    const platform::Value* value = info->find("value");
    if (key && key->string()) row.key = *key->string();
    if (value && value->integer()) row.value = platform::integerValue(*value);
}

void describeListRow(RowSnapshot& row, const platform::PSTableCell& cell) {
    const platform::PSSpecifier& specifier = *cell.specifier();
    row.label = specifier.name();
    row.kind = rowKind(specifier.cellType());
    row.identifier = specifier.identifier();
    row.enabled = cell.isCellEnabled();
    row.checked = cell.isChecked();
    if (cell.isSwitch()) row.on = cell.isOn();
    row.icon = cell.imageView()->image;
    describeChoice(row, specifier);
}

SectionSnapshot describeSection(platform::UITableView& table, std::size_t section) {
    SectionSnapshot described;
    platform::UITableViewDataSource& source = *table.dataSource();
    described.header = source.tableView_titleForHeaderInSection(table, section);
    described.footer = source.tableView_titleForFooterInSection(table, section);
    const std::size_t rows = source.tableView_numberOfRowsInSection(table, section);
    described.rows.reserve(rows);
    for (std::size_t row = 0; row < rows; ++row) {
        const platform::NSIndexPath path{section, row};
        described.rows.push_back(RowSnapshot::of(path, table.produceCellForRowAtIndexPath(path)));
    }
    return described;
}

}  // namespace

RowSnapshot RowSnapshot::of(platform::NSIndexPath path, std::shared_ptr<platform::UITableViewCell> cell) {
    RowSnapshot row;
    row.path = path;
    if (auto* listCell = dynamic_cast<const platform::PSTableCell*>(cell.get())) {
        describeListRow(row, *listCell);
    } else if (cell) {
        row.label = firstText(*cell);
        row.icon = firstImage(*cell);
    }
    row.cell = std::move(cell);
    return row;
}

bool RowSnapshot::leadsOn() const {
    return kind == Kind::link ||
           (cell && cell->accessoryType == platform::UITableViewCellAccessoryType::disclosureIndicator);
}

std::vector<std::string> textsIn(const platform::UIView& view) {
    std::vector<std::string> texts;
    collectTexts(view, texts);
    return texts;
}

platform::UITableView* tableOfPage(platform::UIViewController& page) {
    return dynamic_cast<platform::UITableView*>(&page.view());
}

PageSnapshot PageSnapshot::of(platform::UIViewController& page) {
    PageSnapshot snapshot{page.className(), page.title(), {}};
    platform::UITableView* table = tableOfPage(page);
    if (!table || !table->dataSource()) return snapshot;
    const std::size_t sections = table->dataSource()->numberOfSectionsInTableView(*table);
    for (std::size_t section = 0; section < sections; ++section) {
        snapshot.sections.push_back(describeSection(*table, section));
    }
    return snapshot;
}

}  // namespace hosts
