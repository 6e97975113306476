// SPDX-License-Identifier: MIT
#include "pages/features/album_artwork_page.h"

#include "pages/row_table.h"

namespace trivel3 {
namespace {

constexpr std::string_view autoDisplay = "AlbumArtworkAutoDisplay";
constexpr std::string_view delay = "AlbumArtworkAutoDismissDelay";

// clang-format off
constexpr RowDescription rows[] = {
    titledGroupRow("Auto-Display"),
    choiceRow("On Play",         autoDisplay, 1),
    choiceRow("On Next",         autoDisplay, 2),
    choiceRow("On Previous",     autoDisplay, 4),
    titledGroupRow("Auto-Dismiss"),
    choiceRow("After 1 second",  delay, 1),
    choiceRow("After 3 seconds", delay, 3),
    choiceRow("After 5 seconds", delay, 5),
    choiceRow("After 8 seconds", delay, 8),
};
// clang-format on

constexpr std::size_t lastAutoDisplayRow = 3;
constexpr std::size_t delayGroup = 4;
constexpr std::size_t delayGroupLength = 5;

constexpr ChoiceRule rules[] = {
    {autoDisplay, ChoiceMode::flagSet, AfterChoice::updateSpecifiers},
    {delay, ChoiceMode::singleValue, AfterChoice::nothing},
};

}  // namespace

platform::PSListController::Specifiers KavixPreferencesAlbumArtworkController::buildSpecifiers() {
    return makeRows(*this, rows);
}

std::span<const ChoiceRule> KavixPreferencesAlbumArtworkController::choiceRules() const {
    return rules;
}

void KavixPreferencesAlbumArtworkController::updateSpecifiers(bool animated) {
    if (masterSpecifiers().empty()) return;
    // A negative value has bits set but stands for no events.
    const bool hasEvents = platform::integerValue(store().preferenceForKey(autoDisplay)) >= 1;
    setBlockShown({delayGroup, delayGroupLength}, hasEvents, lastAutoDisplayRow, animated);
}

}  // namespace trivel3
