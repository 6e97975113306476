// SPDX-License-Identifier: MIT
#include "pages/preferences_page_controller.h"

#include "resources/bundle_image.h"

namespace trivel3 {

using platform::PSCellType;
using platform::PSSpecifier;
using platform::Value;

std::optional<Value> KavixPreferencesPageController::getPreferences(PSSpecifier& specifier) const {
    if (!specifier.identifier()) return std::nullopt;
    return store().preferenceForKey(*specifier.identifier());
}

void KavixPreferencesPageController::setPreferences_specifier(const Value& value, PSSpecifier& specifier) {
    if (specifier.identifier()) store().setPreferenceForKey(value, *specifier.identifier());
}

platform::PSListController::Specifiers KavixPreferencesPageController::makeRows(std::span<const Row> table) {
    Specifiers rows;
    rows.reserve(table.size());
    for (const Row& row : table)
        rows.push_back(makeRow(row));
    return rows;
}

std::shared_ptr<PSSpecifier> KavixPreferencesPageController::makeRow(const Row& row) {
    const bool isGroup = row.kind == PSCellType::group;
    PSSpecifier::Setter setter;
    PSSpecifier::Getter getter;
    if (row.kind == PSCellType::switchCell) {
        setter = [this](const Value& value, PSSpecifier& sender) { setPreferences_specifier(value, sender); };
        getter = [this](PSSpecifier& sender) { return getPreferences(sender); };
    }
    auto made = PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        std::string(row.label), isGroup ? nullptr : this, std::move(setter), std::move(getter),
        platform().classes.contains(row.detail) ? std::string(row.detail) : std::string(), row.kind, {});
    if (row.kind == PSCellType::switchCell) made->setIdentifier(std::string(row.key));
    // In the user info and not in the identifier: the framework's getter and setter are not to touch it.
    if (row.kind == PSCellType::listItem) {
        made->setUserInfo(platform::Dictionary{{std::string(ChoiceInfo::identifier), Value(row.key)},
                                               {std::string(ChoiceInfo::value), Value(row.value)}});
        if (row.mode != ChoiceMode::singleValue) made->setProperty_forKey(Value(true), platform::PSPropertyKey::isFlag);
    }
    if (!row.footer.empty()) made->setProperty_forKey(Value(row.footer), platform::PSPropertyKey::footerText);
    if (!row.image.empty())
        made->setProperty_forKey(bundleImage(platform(), row.image), platform::PSPropertyKey::iconImage);
    return made;
}

}  // namespace trivel3
