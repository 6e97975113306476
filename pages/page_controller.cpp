// SPDX-License-Identifier: MIT
#include "pages/page_controller.h"

namespace trivel3 {

std::optional<platform::Value> KavixPreferencesPageController::getPreferences(platform::PSSpecifier& specifier) const {
    if (!specifier.identifier()) return std::nullopt;
    return store().preferenceForKey(*specifier.identifier());
}

void KavixPreferencesPageController::setPreferences_specifier(const platform::Value& value,
                                                              platform::PSSpecifier& specifier) {
    if (specifier.identifier()) store().setPreferenceForKey(value, *specifier.identifier());
}

}  // namespace trivel3
