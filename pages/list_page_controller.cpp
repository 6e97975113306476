// SPDX-License-Identifier: MIT
#include "pages/list_page_controller.h"

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

}  // namespace trivel3
