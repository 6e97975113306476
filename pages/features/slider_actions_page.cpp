// SPDX-License-Identifier: MIT
#include "pages/list_page_controller.h"

namespace trivel3 {
namespace {

constexpr Choice brightness = {"SliderActionsBrightness"};
constexpr Choice volume = {"SliderActionsVolume"};

// clang-format off
constexpr Row rows[] = {
    titledGroup("Tap Brightness Icon to:"),
    choice("Toggle Auto-Brightness",    brightness, 2),
    choice("Set Brightness to Minimum", brightness, 0),
    choice("Set Brightness to Maximum", brightness, 1),
    titledGroup("Tap Volume Icon to:"),
    choice("Switch to Ringer Volume",   volume, 2),
    choice("Set Volume to Minimum",     volume, 0),
    choice("Set Volume to Maximum",     volume, 1),
    group(),
    toggle("Disable Slider HUD", "SliderActionsDisableHUD"),
};
// clang-format on

// The page asks no row for its key, so the switch too goes through as a choice: its cell is checked
// and a tap on it changes nothing.
constexpr PageTable page(rows, {}, ChoiceRows::all);

}  // namespace

/// What a tap on the sliders' icons does, and whether the system's slider display is suppressed. No
/// row depends on another.
class KavixPreferencesSliderActionsController final : public KavixPreferencesListController {
public:
    using KavixPreferencesListController::KavixPreferencesListController;
    static constexpr const char* registeredName = "KavixPreferencesSliderActionsController";
    const char* className() const override { return registeredName; }

protected:
    const PageTable& pageTable() const override { return page; }
};

}  // namespace trivel3

template void platform::addClass<trivel3::KavixPreferencesSliderActionsController>(ClassRegistry& classes);
