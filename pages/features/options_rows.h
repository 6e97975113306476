// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "pages/row_table.h"

/// The rows of the advanced options page.
namespace trivel3::options {

inline constexpr std::string_view conditionKey = "MinimalControlCenterCondition";

/// What the bits of the condition setting stand for; none at all is "always".
enum Condition : int { always = 0, noMediaIsPlaying = 1, airPlayIsUndetected = 2, airDropIsOff = 4 };

/// The sibling product's settings page.
inline constexpr std::string_view ostrelClass = "OstrelPrefsController";

/// Positions in the table below, which are those in the page's master array.
enum Position : std::size_t {
    reachableDisplayGroup = 0,
    reachableDisplay = 1,
    minimalDisplayGroup = 2,
    minimalDisplay = 3,
    conditionAlways = 4,
    conditionNoMedia = 5,
    conditionNoAirPlay = 6,
    conditionNoAirDrop = 7,
    openToLastApp = 9,
    applyToQuickSwitcher = 10,
    quickLauncherGroup = 11,
    quickLauncher = 12,
    sliderActionsGroup = 13,
    sliderActions = 14,
    albumArtwork = 16,
    closeAllApps = 18,
    unlimitedQuickSwitcherGroup = 19,
    unlimitedQuickSwitcher = 20,
    accessHomeScreen = 22,
    accessAppSwitcher = 24,
    invertHotCornersGroup = 25,
    invertHotCorners = 26,
    disableInApplications = 28,
    moveRecentContactsGroup = 29,
    moveRecentContacts = 30,
    ostrel = 34,
};

namespace footer {
inline constexpr std::string_view minimal = "Hides AirDrop/AirPlay and Track-Seeker.";
inline constexpr std::string_view minimalWithinReach =
    "Slide up on playback area to dynamically switch between minimal display at will.";
inline constexpr std::string_view cornersWithQuickSwitcher =
    "Access the Quick Switcher from the right corner, and the Home Screen from the left.";
inline constexpr std::string_view cornersWithAppSwitcher =
    "Access the App Switcher from the right corner, and the Home Screen from the left.";
}  // namespace footer

// clang-format off
inline constexpr auto table = std::to_array<RowDescription>({
    groupRow("Puts Toggles near the bottom for easier one-handed access."),
    switchRow("Reachable Display", "ReachabilityMode"),
    groupRow(footer::minimal),
    switchRow("Minimal Display", "MinimalControlCenterEnabled"),
    choiceRow("Always", conditionKey, always),
    choiceRow("If no Media is Playing", conditionKey, noMediaIsPlaying),
    choiceRow("If AirPlay is undetected", conditionKey, airPlayIsUndetected),
    choiceRow("If AirDrop is Off", conditionKey, airDropIsOff),
    groupRow("Centers the last app when accessing the multitasking display via a swipe up."),
    switchRow("Open to Last App", "OpenToLastApp"),
    switchRow("Apply to Quick Switcher", "OpenToLastAppWithQS"),
    groupRow("Swipe up near the bottom of the Multi-Center to display. Swipe down to hide."),
    linkRow("Quick Launcher", "KavixPreferencesQuickLauncherController"),
    groupRow("Set a custom action for tapping on the icon in the center of the Multi-Center sliders."),
    linkRow("Slider Actions", "KavixPreferencesSliderActionsController"),
    groupRow("Tap track title to display, swipe left/right to skip tracks, swipe down to dismiss. Hold track title "
             "or album art to open playing app."),
    linkRow("Album Artwork", "KavixPreferencesAlbumArtworkController"),
    groupRow("Swipe up on the Home Screen preview to close all apps in the multitasking display."),
    linkRow("Close All Apps", "KavixPreferencesCloseAllAppsController"),
    groupRow("Display more than six most recent apps."),
    switchRow("Unlimited Quick Switcher", "UnlimitedQuickSwitcher"),
    groupRow("Slide further left in Quick Switcher to go to Home Screen."),
    switchRow("Access Home Screen", "AccessHomeScreen"),
    groupRow("Pull up further in Quick Switcher to access."),
    switchRow("Access App Switcher", "AccessAppSwitcher"),
    groupRow(),
    switchRow("Invert Hot Corners", "InvertHotCorners"),
    groupRow("Select apps to disable Hot Corners in."),
    linkRow("Disable in Applications", "KavixPreferencesExceptionsController"),
    groupRow("Enable to place Recent Contacts in Notification Center."),
    switchRow("Move Recent Contacts to NC", "PeopleInToday"),
    groupRow("Enabling increases the speed of exiting apps via single-clicking the home button."),
    switchRow("Disable Double-Click Home", "DisableHomeDoubleClick"),
    groupRow("Customize your Toggles & Quick Launcher!"),
    linkRow("Ostrel", ostrelClass, "Ostrel"),
});
// clang-format on

}  // namespace trivel3::options
