// SPDX-License-Identifier: MIT
#include "pages/row_table.h"

#include "resources/bundle_image.h"

namespace trivel3 {
namespace {

using platform::PSCellType;
using platform::PSSpecifier;
using platform::Value;

std::shared_ptr<PSSpecifier> makeGroup(const RowDescription& row) {
    auto group = PSSpecifier::groupSpecifierWithName(std::string(row.label));
    if (!row.footer.empty()) group->setProperty_forKey(Value(row.footer), platform::PSPropertyKey::footerText);
    return group;
}

std::shared_ptr<PSSpecifier> makeSwitch(KavixPreferencesPageController& page, const RowDescription& row) {
    auto specifier = PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        std::string(row.label), &page,
        [&page](const Value& value, PSSpecifier& sender) { page.setPreferences_specifier(value, sender); },
        [&page](PSSpecifier& sender) { return page.getPreferences(sender); }, {}, row.kind, {});
    specifier->setIdentifier(std::string(row.key));
    return specifier;
}

std::shared_ptr<PSSpecifier> makeChoice(KavixPreferencesPageController& page, const RowDescription& row) {
    auto specifier = PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        std::string(row.label), &page, nullptr, nullptr, {}, row.kind, {});
    // In the user info and not in the identifier: the framework's getter and setter are not to touch it.
    specifier->setUserInfo(platform::Dictionary{{std::string(ChoiceInfo::identifier), Value(row.key)},
                                                {std::string(ChoiceInfo::value), Value(row.value)}});
    return specifier;
}

std::shared_ptr<PSSpecifier> makeLink(KavixPreferencesPageController& page, const RowDescription& row) {
    return PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        std::string(row.label), &page, nullptr, nullptr, std::string(row.detail), row.kind, {});
}

std::shared_ptr<PSSpecifier> makeRow(KavixPreferencesPageController& page, const RowDescription& row) {
    switch (row.kind) {
        case PSCellType::switchCell:
            return makeSwitch(page, row);
        case PSCellType::listItem:
            return makeChoice(page, row);
        case PSCellType::link:
            return makeLink(page, row);
        case PSCellType::group:
            break;
    }
    return makeGroup(row);
}

}  // namespace

platform::PSListController::Specifiers makeRows(KavixPreferencesPageController& page,
                                                std::span<const RowDescription> table) {
    platform::PSListController::Specifiers rows;
    rows.reserve(table.size());
    for (const RowDescription& description : table) {
        auto row = makeRow(page, description);
        if (!description.image.empty()) {
            row->setProperty_forKey(bundleImage(page.platform(), description.image),
                                    platform::PSPropertyKey::iconImage);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

}  // namespace trivel3
