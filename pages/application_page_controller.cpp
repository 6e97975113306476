// SPDX-License-Identifier: MIT
#include "pages/application_page_controller.h"

#include <utility>

#include "pages/application_rows.h"

namespace trivel3 {

const platform::PSListController::Specifiers& KavixPreferencesApplicationPageController::specifiers() {
    if (!hasSpecifiers()) {
        Specifiers kept = std::exchange(_rowsOverReload, {});
        setSpecifiers(kept.empty() ? buildSpecifiers() : std::move(kept));
    }
    return currentSpecifiers();
}

void KavixPreferencesApplicationPageController::reloadSpecifiers() {
    _rowsOverReload = currentSpecifiers();
    KavixPreferencesPageController::reloadSpecifiers();
}

std::shared_ptr<platform::UITableViewCell> KavixPreferencesApplicationPageController::tableView_cellForRowAtIndexPath(
    platform::UITableView& table, platform::NSIndexPath path) {
    auto produced = KavixPreferencesPageController::tableView_cellForRowAtIndexPath(table, path);
    auto* cell = dynamic_cast<platform::PSTableCell*>(produced.get());
    if (cell && path.section >= firstApplicationSection()) {
        cell->setChecked(isTicked(*cell->specifier()->identifier()));
        fillApplicationIcon(platform(), *cell);
    }
    return produced;
}

void KavixPreferencesApplicationPageController::tableView_didSelectRowAtIndexPath(platform::UITableView& table,
                                                                                  platform::NSIndexPath path) {
    KavixPreferencesPageController::tableView_didSelectRowAtIndexPath(table, path);
    if (path.section < firstApplicationSection()) return;
    const auto produced = tableView_cellForRowAtIndexPath(table, path);
    auto* cell = dynamic_cast<platform::PSTableCell*>(produced.get());
    if (!cell) return;
    cell->setChecked(!cell->isChecked());
    setTicked(cell->isChecked(), *cell->specifier()->identifier());
}

}  // namespace trivel3
