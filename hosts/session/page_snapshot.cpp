// SPDX-License-Identifier: MIT
#include "hosts/session/page_snapshot.h"

#include "hosts/session/defaults.h"
#include "platform/list/table_cell.h"
#include "platform/ui/label.h"

namespace hosts {
namespace {

// Under these names a choice row says in its user info which setting it changes, and to what. They are part
// of what a page shows: other programs read them too.
constexpr const char* choiceKey = "identifier";
constexpr const char* choiceValue = "value";

// What a view is about: the parts that it says tell it, or else all of them.
std::vector<std::shared_ptr<platform::UIView>> tellingParts(const platform::UIView& view) {
    auto telling = view.accessibilityElements();
    return telling.empty() ? view.subviews() : telling;
}

void collectTexts(const platform::UIView& view, std::vector<std::string>& texts) {
    if (auto* label = dynamic_cast<const platform::UILabel*>(&view)) {
        if (auto text = label->text()) texts.push_back(*std::move(text));
    }
    for (const auto& part : tellingParts(view))
        collectTexts(*part, texts);
}

std::shared_ptr<const platform::UIImage> firstImage(const platform::UIView& view) {
    if (auto* picture = dynamic_cast<const platform::UIImageView*>(&view)) return picture->image;
    for (const auto& part : tellingParts(view)) {
        if (auto image = firstImage(*part)) return image;
    }
    return nullptr;
}

// Null for a row that carries none.
const platform::Dictionary* choiceInfo(const platform::PSSpecifier& row) {
    return row.userInfo() ? row.userInfo()->dictionary() : nullptr;
}

bool isSingleValue(const platform::PSSpecifier& row) {
    const platform::Dictionary* info = choiceInfo(row);
    return info && info->find(choiceKey) && !row.propertyForKey(platform::PSPropertyKey::isFlag);
}

void describeChoice(RowSnapshot& row, const platform::PSSpecifier& specifier) {
    row.key = choiceKeyOf(specifier);
    row.value = choiceValueOf(specifier);
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

std::optional<std::string> choiceKeyOf(const platform::PSSpecifier& row) {
    const platform::Dictionary* info = choiceInfo(row);
    const platform::Value* key = info ? info->find(choiceKey) : nullptr;
    return key && key->string() ? std::optional(*key->string()) : std::nullopt;
}

std::optional<std::int64_t> choiceValueOf(const platform::PSSpecifier& row) {
    const platform::Dictionary* info = choiceInfo(row);
    const platform::Value* value = info ? info->find(choiceValue) : nullptr;
    return value && value->integer() ? std::optional(platform::integerValue(*value)) : std::nullopt;
}

RowLook::Kind rowKind(const platform::PSSpecifier& row) {
    switch (row.cellType()) {
        case platform::PSCellType::switchCell:
            return RowLook::Kind::switchRow;
        case platform::PSCellType::link:
            return RowLook::Kind::link;
        case platform::PSCellType::group:
        case platform::PSCellType::listItem:
            break;
    }
    return RowLook::Kind::item;
}

const char* kindName(RowLook::Kind kind) {
    switch (kind) {
        case RowLook::Kind::switchRow:
            return "switch";
        case RowLook::Kind::link:
            return "link";
        case RowLook::Kind::item:
            break;
    }
    return "item";
}

RowLook RowLook::of(const platform::UITableViewCell& cell, const Defaults* defaults) {
    RowLook look;
    look.details = textsIn(cell);
    if (!look.details.empty()) {
        look.label = std::move(look.details.front());
        look.details.erase(look.details.begin());
    }
    look.icon = firstImage(cell);
    look.accessory = cell.accessoryType;
    look.labelInset = cell.textLabel()->frame().x;
    look.accessoryWidth = cell.accessoryWidth();
    look.height = cell.frame().height;
    if (auto* listCell = dynamic_cast<const platform::PSTableCell*>(&cell)) {
        look.kind = rowKind(*listCell->specifier());
        look.enabled = listCell->isCellEnabled();
        look.checked = listCell->isChecked();
        look.isOneOfSeveral = isSingleValue(*listCell->specifier());
        if (listCell->isSwitch()) look.on = listCell->isOn();
        look.isChanged = defaults && defaults->isChanged(*listCell->specifier(), look.checked);
    }
    return look;
}

bool RowLook::leadsOn() const {
    return kind == Kind::link || accessory == platform::UITableViewCellAccessoryType::disclosureIndicator;
}

RowSnapshot RowSnapshot::of(platform::NSIndexPath path, std::shared_ptr<platform::UITableViewCell> cell,
                            const Defaults* defaults) {
    RowSnapshot row;
    row.path = path;
    if (cell) static_cast<RowLook&>(row) = RowLook::of(*cell, defaults);
    if (auto* listCell = dynamic_cast<const platform::PSTableCell*>(cell.get())) {
        row.identifier = listCell->specifier()->identifier();
        describeChoice(row, *listCell->specifier());
    }
    row.cell = std::move(cell);
    return row;
}

std::vector<std::string> textsIn(const platform::UIView& view) {
    std::vector<std::string> texts;
    collectTexts(view, texts);
    return texts;
}

platform::UIButton* rightButtonOf(platform::UIViewController& page) {
    const auto& item = page.navigationItem().rightBarButtonItem();
    return item ? dynamic_cast<platform::UIButton*>(item->customView().get()) : nullptr;
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
