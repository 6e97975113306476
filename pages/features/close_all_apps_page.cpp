// SPDX-License-Identifier: MIT
#include "pages/features/close_all_apps_page.h"

#include <iterator>
#include <utility>

#include "pages/application_rows.h"
#include "pages/row_table.h"

namespace trivel3 {
namespace {

constexpr std::string_view sparedApplications = "CloseAllAppsExceptions";
constexpr std::size_t switchSections = 3;

constexpr RowDescription switches[] = {
    groupRow("Remove the confirmation button and close all apps automatically upon swiping up."),
    switchRow("Auto-Close All Apps", "CloseAllAppsNoConfirmation"),
    groupRow("Dismiss Multi-Center after closing all apps."),
    switchRow("Go Home upon Close All", "CloseAllAppsBackToHomeScreen"),
    groupRow("Do not close app playing background audio."),
    switchRow("Exclude Currently Playing", "CloseAllAppsExcludeNowPlaying"),
};

}  // namespace

platform::PSListController::Specifiers KavixPreferencesCloseAllAppsController::buildSpecifiers() {
    Specifiers built = makeRows(*this, switches);
    Specifiers applications = ApplicationRowBuilder(*this).build("Exclude From Close All");
    built.insert(built.end(), std::move_iterator(applications.begin()), std::move_iterator(applications.end()));
    return built;
}

std::size_t KavixPreferencesCloseAllAppsController::firstApplicationSection() const {
    return switchSections;
}

bool KavixPreferencesCloseAllAppsController::isTicked(const std::string& identifier) {
    const auto stored = store().storedValueForKey(sparedApplications);
    const platform::Dictionary* ticks = stored ? stored->dictionary() : nullptr;
    if (stored && !ticks) store().removePreferenceForKey(sparedApplications);
    const platform::Value* tick = ticks ? ticks->find(identifier) : nullptr;
    return tick && platform::boolValue(*tick);
}

void KavixPreferencesCloseAllAppsController::setTicked(bool ticked, const std::string& identifier) {
    const auto stored = store().preferenceForKey(sparedApplications);
    const platform::Dictionary* spared = stored ? stored->dictionary() : nullptr;
    platform::Dictionary changed = spared ? *spared : platform::Dictionary();
    changed.set(identifier, ticked);
    store().setPreferenceForKey(std::move(changed), sparedApplications);
}

}  // namespace trivel3
