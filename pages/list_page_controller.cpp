// SPDX-License-Identifier: MIT
#include "pages/list_page_controller.h"

#include <algorithm>
#include <cstddef>

namespace trivel3 {
namespace {

const platform::Value* userInfoEntry(const platform::PSSpecifier& row, std::string_view key) {
    const platform::Dictionary* info = row.userInfo() ? row.userInfo()->dictionary() : nullptr;
    return info ? info->find(key) : nullptr;
}

}  // namespace

const platform::PSListController::Specifiers& KavixPreferencesListController::specifiers() {
    if (!hasSpecifiers()) {
        if (_kavixSpecifiers.empty()) _kavixSpecifiers = buildSpecifiers();
        setSpecifiers(_kavixSpecifiers);
    }
    return currentSpecifiers();
}

void KavixPreferencesListController::viewWillAppear(bool animated) {
    KavixPreferencesPageController::viewWillAppear(animated);
    updateSpecifiers(false);
}

void KavixPreferencesListController::reloadSpecifiers() {
    KavixPreferencesPageController::reloadSpecifiers();
    updateSpecifiers(false);
}

void KavixPreferencesListController::updateSpecifiers(bool animated) {
    const Facts facts = readFacts();
    repair(facts);
    if (_kavixSpecifiers.empty()) return;
    const PageTable& table = pageTable();
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        if (table.rows[i].usable) settleEnabled(_kavixSpecifiers[i], table.rows[i].usable(facts), animated);
    }
    for (const Presence& each : table.presence) {
        if (!each.onlyWhen || each.onlyWhen(facts)) settlePresence(each, each.shownWhen(facts), animated);
    }
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        const Row& row = table.rows[i];
        if (!row.footerRule) continue;
        settleFooter(_kavixSpecifiers[i], row.footerRule(facts) ? row.footerThen : row.footerElse, animated);
    }
}

// A row that has never been set either way is set even where that makes no difference.
void KavixPreferencesListController::settleEnabled(const std::shared_ptr<platform::PSSpecifier>& row, bool enabled,
                                                   bool animated) {
    if (row->propertyForKey(platform::PSPropertyKey::enabled) && row->isEnabled() == enabled) return;
    row->setProperty_forKey(platform::Value(enabled), platform::PSPropertyKey::enabled);
    reloadSpecifier_animated(row, animated);
}

// A block counts as shown when its first row is.
void KavixPreferencesListController::settlePresence(const Presence& presence, bool shown, bool animated) {
    const Run run = pageTable().runOf(presence.block);
    const auto first = _kavixSpecifiers.begin() + static_cast<std::ptrdiff_t>(run.start);
    if (containsSpecifier(*first) == shown || (shown && !presence.comesBack)) return;
    const Specifiers block(first, first + static_cast<std::ptrdiff_t>(run.length));
    const bool isOneRow = block.size() == 1;
    if (shown && isOneRow) insertSpecifier_afterSpecifier_animated(*first, *(first - 1), animated);
    if (shown && !isOneRow) insertContiguousSpecifiers_afterSpecifier_animated(block, *(first - 1), animated);
    if (!shown && isOneRow) removeSpecifier_animated(*first, animated);
    if (!shown && !isOneRow) removeContiguousSpecifiers_animated(block, animated);
}

void KavixPreferencesListController::settleFooter(const std::shared_ptr<platform::PSSpecifier>& group,
                                                  std::string_view text, bool animated) {
    if (group->textForKey(platform::PSPropertyKey::footerText) == text) return;
    group->setProperty_forKey(platform::Value(text), platform::PSPropertyKey::footerText);
    reloadSpecifier_animated(group, animated);
}

std::shared_ptr<platform::UITableViewCell> KavixPreferencesListController::tableView_cellForRowAtIndexPath(
    platform::UITableView& table, platform::NSIndexPath path) {
    auto cell = KavixPreferencesPageController::tableView_cellForRowAtIndexPath(table, path);
    const auto choice = choiceAtIndexPath(path);
    auto* checkable = dynamic_cast<platform::PSTableCell*>(cell.get());
    if (choice && checkable) {
        checkable->setChecked(isChoiceChecked(choice->mode, currentValue(*choice), choice->value));
    }
    return cell;
}

void KavixPreferencesListController::tableView_didSelectRowAtIndexPath(platform::UITableView& table,
                                                                       platform::NSIndexPath path) {
    KavixPreferencesPageController::tableView_didSelectRowAtIndexPath(table, path);
    const auto choice = choiceAtIndexPath(path);
    if (!choice || !choice->key) return;
    const std::int64_t current = currentValue(*choice);
    const std::int64_t chosen = settingAfterChoice(choice->mode, current, choice->value);
    if (chosen == current) return;
    store().setPreferenceForKey(chosen, *choice->key);
    for (const auto& row : specifiersInGroup(path.section))
        reloadSpecifier_animated(row, true);
    if (choice->after == AfterChoice::updateSpecifiers) updateSpecifiers(true);
}

std::optional<KavixPreferencesListController::ChoiceAt> KavixPreferencesListController::choiceAtIndexPath(
    platform::NSIndexPath path) const {
    const auto row = specifierAtIndexPath(path);
    if (!row) return std::nullopt;
    ChoiceAt choice{};
    if (const platform::Value* value = userInfoEntry(*row, ChoiceInfo::value)) {
        choice.value = platform::integerValue(*value);
    }
    const platform::Value* key = userInfoEntry(*row, ChoiceInfo::identifier);
    if (key && key->string()) choice.key = *key->string();
    if (pageTable().choices == ChoiceRows::all) return choice;
    const auto known = std::ranges::find_if(pageTable().rows, [&choice](const Row& each) {
        return each.kind == platform::PSCellType::listItem && each.key == choice.key;
    });
    if (known == pageTable().rows.end()) return std::nullopt;
    choice.mode = known->mode;
    choice.after = known->after;
    return choice;
}

std::int64_t KavixPreferencesListController::currentValue(const ChoiceAt& choice) const {
    return choice.key ? platform::integerValue(store().preferenceForKey(*choice.key)) : 0;
}

}  // namespace trivel3
