// SPDX-License-Identifier: MIT
#include "pages/application_page_controller.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/services/app_list.h"

namespace trivel3 {
namespace {

using platform::ALApplicationList;
using platform::PSSpecifier;
using Specifiers = platform::PSListController::Specifiers;

// The home screen, set-up, demonstrations, diagnostics and remote view services: the service reports
// them as applications.
constexpr std::string_view hiddenApplicationIdentifiers[] = {
    "com.apple.AdSheet",
    "com.apple.AdSheetPhone",
    "com.apple.AdSheetPad",
    "com.apple.DataActivation",
    "com.apple.DemoApp",
    "com.apple.fieldtest",
    "com.apple.iosdiagnostics",
    "com.apple.iphoneos.iPodOut",
    "com.apple.TrustMe",
    "com.apple.WebSheet",
    "com.apple.springboard",
    "com.apple.purplebuddy",
    "com.apple.datadetectors.DDActionsService",
    "com.apple.FacebookAccountMigrationDialog",
    "com.apple.iad.iAdOptOut",
    "com.apple.ios.StoreKitUIService",
    "com.apple.TextInput.kbd",
    "com.apple.MailCompositionService",
    "com.apple.mobilesms.compose",
    "com.apple.quicklook.quicklookd",
    "com.apple.ShoeboxUIService",
    "com.apple.social.remoteui.SocialUIService",
    "com.apple.WebViewService",
    "com.apple.gamecenter.GameCenterUIService",
    "com.apple.appleaccount.AACredentialRecoveryDialog",
    "com.apple.CompassCalibrationViewService",
    "com.apple.WebContentFilter.remoteUI.WebContentAnalysisUI",
    "com.apple.PassbookUIService",
    "com.apple.uikit.PrintStatus",
    "com.apple.Copilot",
    "com.apple.MusicUIService",
    "com.apple.AccountAuthenticationDialog",
    "com.apple.MobileReplayer",
    "com.apple.SiriViewService",
};
static_assert(std::size(hiddenApplicationIdentifiers) == 34);

bool isHidden(std::string_view identifier) {
    return std::ranges::find(hiddenApplicationIdentifiers, identifier) != std::end(hiddenApplicationIdentifiers);
}

// Looked up each time: the service comes with a bundle that may not have been loaded.
std::shared_ptr<ALApplicationList> sharedApplicationList(platform::Platform& platform) {
    return platform.classes.shared<ALApplicationList>(ALApplicationList::className, platform);
}

std::shared_ptr<PSSpecifier> makeApplicationRow(platform::PSListController& page, const std::string& identifier,
                                                const ALApplicationList::Applications& displayNames) {
    const auto named = displayNames.find(identifier);
    auto row = PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        named == displayNames.end() ? std::string() : named->second, &page, nullptr, nullptr, {},
        platform::PSCellType::listItem, {});
    row->setIdentifier(identifier);
    return row;
}

// In the order of the identifiers' characters, which is that of the service's answer.
void appendApplicationRows(platform::PSListController& page, const ALApplicationList::Applications& applications,
                           const ALApplicationList::Applications& displayNames, Specifiers& rows) {
    for (const auto& application : applications) {
        const std::string& identifier = application.first;
        if (!isHidden(identifier)) rows.push_back(makeApplicationRow(page, identifier, displayNames));
    }
}

}  // namespace

platform::PSListController::Specifiers ApplicationRowBuilder::build(std::string_view firstGroupTitle) const {
    const auto service = sharedApplicationList(_page.platform());
    const auto displayNames = service ? service->applications() : ALApplicationList::Applications();
    Specifiers rows;
    rows.push_back(PSSpecifier::groupSpecifierWithName(std::string(firstGroupTitle)));
    if (service) appendApplicationRows(_page, service->applicationsFilteredBySystem(true), displayNames, rows);
    rows.push_back(PSSpecifier::emptyGroupSpecifier());
    if (service) appendApplicationRows(_page, service->applicationsFilteredBySystem(false), displayNames, rows);
    return rows;
}

void fillApplicationIcon(platform::Platform& platform, platform::PSTableCell& cell) {
    PSSpecifier& row = *cell.specifier();
    if (row.propertyForKey(platform::PSPropertyKey::iconImage)) return;
    const auto service = sharedApplicationList(platform);
    if (!service) return;
    row.setProperty_forKey(
        service->iconOfSize_forDisplayIdentifier(ALApplicationList::iconSizeSmall, *row.identifier()),
        platform::PSPropertyKey::iconImage);
    cell.refreshCellContentsWithSpecifier(row);
}

const platform::PSListController::Specifiers& KavixPreferencesApplicationPageController::specifiers() {
    if (!hasSpecifiers()) {
        Specifiers kept = std::exchange(_rowsOverReload, {});
        setSpecifiers(kept.empty() ? buildSpecifiers() : std::move(kept));
    }
    return currentSpecifiers();
}

platform::PSListController::Specifiers KavixPreferencesApplicationPageController::buildSpecifiers() {
    Specifiers built = makeRows(ownRows());
    Specifiers applications = ApplicationRowBuilder(*this).build(applicationsTitle());
    built.insert(built.end(), std::move_iterator(applications.begin()), std::move_iterator(applications.end()));
    return built;
}

void KavixPreferencesApplicationPageController::reloadSpecifiers() {
    _rowsOverReload = currentSpecifiers();
    KavixPreferencesPageController::reloadSpecifiers();
}

bool KavixPreferencesApplicationPageController::isApplication(platform::NSIndexPath path) const {
    const auto ownSections = std::ranges::count(ownRows(), platform::PSCellType::group, &Row::kind);
    return path.section >= static_cast<std::size_t>(ownSections);
}

std::shared_ptr<platform::UITableViewCell> KavixPreferencesApplicationPageController::tableView_cellForRowAtIndexPath(
    platform::UITableView& table, platform::NSIndexPath path) {
    auto produced = KavixPreferencesPageController::tableView_cellForRowAtIndexPath(table, path);
    auto* cell = dynamic_cast<platform::PSTableCell*>(produced.get());
    if (cell && isApplication(path)) {
        cell->setChecked(isTicked(*cell->specifier()->identifier()));
        fillApplicationIcon(platform(), *cell);
    }
    return produced;
}

void KavixPreferencesApplicationPageController::tableView_didSelectRowAtIndexPath(platform::UITableView& table,
                                                                                  platform::NSIndexPath path) {
    KavixPreferencesPageController::tableView_didSelectRowAtIndexPath(table, path);
    if (!isApplication(path)) return;
    const auto produced = tableView_cellForRowAtIndexPath(table, path);
    auto* cell = dynamic_cast<platform::PSTableCell*>(produced.get());
    if (!cell) return;
    cell->setChecked(!cell->isChecked());
    setTicked(cell->isChecked(), *cell->specifier()->identifier());
}

}  // namespace trivel3
