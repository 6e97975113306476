// SPDX-License-Identifier: MIT
#include "pages/features/slider_actions_page.h"

#include "pages/row_table.h"

namespace trivel3 {
namespace {

constexpr std::string_view brightness = "SliderActionsBrightness";
constexpr std::string_view volume = "SliderActionsVolume";

// clang-format off
constexpr RowDescription rows[] = {
    titledGroupRow("Tap Brightness Icon to:"),
    choiceRow("Toggle Auto-Brightness",    brightness, 2),
    choiceRow("Set Brightness to Minimum", brightness, 0),
    choiceRow("Set Brightness to Maximum", brightness, 1),
    titledGroupRow("Tap Volume Icon to:"),
    choiceRow("Switch to Ringer Volume",   volume, 2),
    choiceRow("Set Volume to Minimum",     volume, 0),
    choiceRow("Set Volume to Maximum",     volume, 1),
    groupRow(),
    switchRow("Disable Slider HUD", "SliderActionsDisableHUD"),
};
// clang-format on

// The page asks no row for its key, so the switch too goes through as a choice: of a setting that
// reads as 0 and the value 0, which checks its cell and makes a tap change nothing.
constexpr ChoiceRule rules[] = {{std::nullopt, ChoiceMode::singleValue, AfterChoice::nothing}};

}  // namespace

platform::PSListController::Specifiers KavixPreferencesSliderActionsController::buildSpecifiers() {
    return makeRows(*this, rows);
}

std::span<const ChoiceRule> KavixPreferencesSliderActionsController::choiceRules() const {
    return rules;
}

}  // namespace trivel3
