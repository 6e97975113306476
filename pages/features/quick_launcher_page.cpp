// SPDX-License-Identifier: MIT
#include "pages/features/quick_launcher_page.h"

#include "pages/row_table.h"

namespace trivel3 {
namespace {

constexpr std::string_view notPlaying = "QuickLauncherNotPlaying";
constexpr std::string_view isPlaying = "QuickLauncherIsPlaying";
constexpr std::string_view delay = "QuickLauncherAutoDismissDelay";

constexpr int doNotDisplay = 0;
constexpr int display = 1;
constexpr int autoDismiss = 2;

// clang-format off
constexpr RowDescription rows[] = {
    titledGroupRow("When No Media is Playing"),
    choiceRow("Display",         notPlaying, display),
    choiceRow("Do Not Display",  notPlaying, doNotDisplay),
    choiceRow("Auto-Dismiss",    notPlaying, autoDismiss),
    titledGroupRow("When Media is Playing"),
    choiceRow("Auto-Dismiss",    isPlaying, autoDismiss),
    choiceRow("Do Not Display",  isPlaying, doNotDisplay),
    choiceRow("Display",         isPlaying, display),
    titledGroupRow("Auto-Dismiss"),
    choiceRow("After 1 second",  delay, 1),
    choiceRow("After 3 seconds", delay, 3),
    choiceRow("After 5 seconds", delay, 5),
    choiceRow("After 8 seconds", delay, 8),
};
// clang-format on

constexpr std::size_t lastIsPlayingRow = 7;
constexpr std::size_t delayGroup = 8;
constexpr std::size_t delayGroupLength = 5;

constexpr ChoiceRule rules[] = {
    {notPlaying, ChoiceMode::singleValue, AfterChoice::updateSpecifiers},
    {isPlaying, ChoiceMode::singleValue, AfterChoice::updateSpecifiers},
    {delay, ChoiceMode::singleValue, AfterChoice::updateSpecifiers},
};

}  // namespace

platform::PSListController::Specifiers KavixPreferencesQuickLauncherController::buildSpecifiers() {
    return makeRows(*this, rows);
}

std::span<const ChoiceRule> KavixPreferencesQuickLauncherController::choiceRules() const {
    return rules;
}

void KavixPreferencesQuickLauncherController::updateSpecifiers(bool animated) {
    if (masterSpecifiers().empty()) return;
    const auto dismissesItself = [this](std::string_view key) {
        return platform::integerValue(store().preferenceForKey(key)) == autoDismiss;
    };
    const bool idle = dismissesItself(notPlaying);
    const bool playing = dismissesItself(isPlaying);
    setBlockShown({delayGroup, delayGroupLength}, idle || playing, lastIsPlayingRow, animated);
}

}  // namespace trivel3
