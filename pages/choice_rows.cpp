// SPDX-License-Identifier: MIT
#include "pages/choice_rows.h"

#include <algorithm>

#include "pages/row_table.h"

namespace trivel3 {
namespace {

const platform::Value* entry(const platform::PSSpecifier& row, std::string_view key) {
    const platform::Dictionary* info = row.userInfo() ? row.userInfo()->dictionary() : nullptr;
    return info ? info->find(key) : nullptr;
}

std::optional<std::string> keyOf(const platform::PSSpecifier& row) {
    const platform::Value* key = entry(row, ChoiceInfo::identifier);
    if (!key || !key->string()) return std::nullopt;
    return *key->string();
}

std::int64_t valueOf(const platform::PSSpecifier& row) {
    const platform::Value* value = entry(row, ChoiceInfo::value);
    return value ? platform::integerValue(*value) : 0;
}

}  // namespace

bool isChoiceChecked(ChoiceMode mode, std::int64_t current, std::int64_t value) {
    if (mode == ChoiceMode::singleValue) return current == value;
    if (mode == ChoiceMode::flagSetWithNone && value == 0) return current == 0;
    return (current & value) != 0;
}

std::int64_t settingAfterChoice(ChoiceMode mode, std::int64_t current, std::int64_t value) {
    if (mode == ChoiceMode::singleValue || value == 0) return value;
    return (current & value) != 0 ? current & ~value : current | value;
}

std::optional<KavixPreferencesChoiceController::Choice> KavixPreferencesChoiceController::choiceAtIndexPath(
    platform::NSIndexPath path) const {
    auto row = specifierAtIndexPath(path);
    if (!row) return std::nullopt;
    auto key = keyOf(*row);
    const auto rules = choiceRules();
    auto rule = std::ranges::find_if(rules, [&key](const ChoiceRule& each) { return !each.key || each.key == key; });
    if (rule == rules.end()) return std::nullopt;
    return Choice{*rule, std::move(key), valueOf(*row)};
}

std::int64_t KavixPreferencesChoiceController::currentValue(const Choice& choice) const {
    return choice.key ? platform::integerValue(store().preferenceForKey(*choice.key)) : 0;
}

std::shared_ptr<platform::UITableViewCell> KavixPreferencesChoiceController::tableView_cellForRowAtIndexPath(
    platform::UITableView& table, platform::NSIndexPath path) {
    auto cell = KavixPreferencesListController::tableView_cellForRowAtIndexPath(table, path);
    auto choice = choiceAtIndexPath(path);
    auto* checkable = dynamic_cast<platform::PSTableCell*>(cell.get());
    if (choice && checkable) {
        checkable->setChecked(isChoiceChecked(choice->rule.mode, currentValue(*choice), choice->value));
    }
    return cell;
}

void KavixPreferencesChoiceController::tableView_didSelectRowAtIndexPath(platform::UITableView& table,
                                                                         platform::NSIndexPath path) {
    KavixPreferencesListController::tableView_didSelectRowAtIndexPath(table, path);
    auto choice = choiceAtIndexPath(path);
    if (!choice || !choice->key) return;
    const std::int64_t current = currentValue(*choice);
    const std::int64_t chosen = settingAfterChoice(choice->rule.mode, current, choice->value);
    if (chosen == current) return;
    store().setPreferenceForKey(chosen, *choice->key);
    for (const auto& row : specifiersInGroup(path.section))
        reloadSpecifier_animated(row, true);
    if (choice->rule.after == AfterChoice::updateSpecifiers) updateSpecifiers(true);
}

}  // namespace trivel3
