// SPDX-License-Identifier: MIT
#include "hosts/session/pane_rows.h"

#include "hosts/session/finder.h"
#include "hosts/session/page_snapshot.h"
#include "hosts/session/title_path.h"
#include "platform/list/list_controller.h"

namespace hosts {
namespace {

using platform::PSListController;
using platform::PSSpecifier;

std::optional<std::string> textOrNothing(std::string text) {
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

bool isRowChecked(PSListController& list, std::size_t position) {
    const auto path = list.indexPathForIndex(position);
    const auto produced = path ? list.tableView_cellForRowAtIndexPath(list.table(), *path) : nullptr;
    const auto* const cell = dynamic_cast<const platform::PSTableCell*>(produced.get());
    return cell && cell->isChecked();
}

PaneRow describeRow(const PSSpecifier& row) {
    PaneRow described;
    described.label = row.name();
    described.isEnabled = row.isEnabled();
    described.isLink = isPageLink(row);
    described.key = rowKind(row) == RowLook::Kind::switchRow ? row.identifier() : choiceKeyOf(row);
    described.value = choiceValueOf(row);
    described.isFlag = row.propertyForKey(platform::PSPropertyKey::isFlag) != nullptr;
    if (isApplicationRow(row)) described.application = row.identifier();
    return described;
}

}  // namespace

std::vector<PaneRow> rowsOfPage(const std::vector<std::string>& titles, platform::UIViewController& page) {
    std::vector<PaneRow> rows;
    auto* const list = dynamic_cast<PSListController*>(&page);
    if (!list) return rows;
    const PSListController::Specifiers specifiers = list->specifiers();
    std::optional<std::string> header;
    std::optional<std::string> footer;
    for (std::size_t position = 0; position < specifiers.size(); ++position) {
        const PSSpecifier& row = *specifiers[position];
        if (row.cellType() == platform::PSCellType::group) {
            header = textOrNothing(row.name());
            footer = row.textForKey(platform::PSPropertyKey::footerText);
            continue;
        }
        PaneRow& described = rows.emplace_back(describeRow(row));
        described.page = titles;
        described.pageTitle = page.title();
        described.header = header;
        described.footer = footer;
        described.isChecked = described.application && isRowChecked(*list, position);
    }
    return rows;
}

}  // namespace hosts
