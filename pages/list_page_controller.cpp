// SPDX-License-Identifier: MIT
#include "pages/list_page_controller.h"

#include <span>

namespace trivel3 {

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

void KavixPreferencesListController::setFooter(const std::shared_ptr<platform::PSSpecifier>& group,
                                               std::string_view text, bool animated) {
    if (group->textForKey(platform::PSPropertyKey::footerText) == text) return;
    group->setProperty_forKey(platform::Value(text), platform::PSPropertyKey::footerText);
    reloadSpecifier_animated(group, animated);
}

void KavixPreferencesListController::setEnabled(const std::shared_ptr<platform::PSSpecifier>& row, bool enabled,
                                                bool animated) {
    if (row->propertyForKey(platform::PSPropertyKey::enabled) && row->isEnabled() == enabled) return;
    row->setProperty_forKey(platform::Value(enabled), platform::PSPropertyKey::enabled);
    reloadSpecifier_animated(row, animated);
}

void KavixPreferencesListController::setBlockShown(Block block, bool shown, std::size_t anchor, bool animated) {
    if (!shown) {
        removeBlock(block, animated);
    } else if (!containsSpecifier(_kavixSpecifiers[block.start])) {
        insertContiguousSpecifiers_afterSpecifier_animated(rowsOf(block), _kavixSpecifiers[anchor], animated);
    }
}

void KavixPreferencesListController::removeBlock(Block block, bool animated) {
    removeContiguousSpecifiers_animated(rowsOf(block), animated);
}

platform::PSListController::Specifiers KavixPreferencesListController::rowsOf(Block block) const {
    std::span rows = std::span(_kavixSpecifiers).subspan(block.start, block.length);
    return Specifiers(rows.begin(), rows.end());
}

}  // namespace trivel3
