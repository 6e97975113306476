// SPDX-License-Identifier: MIT
#include "tests/model/page_tables.h"

namespace model {
namespace {

Row group(std::string footer = {}) {
    return {Row::Kind::group, {}, {}, 0, std::move(footer)};
}
Row titled(std::string title) {
    return {Row::Kind::group, std::move(title), {}, 0, {}};
}
Row toggle(std::string label, std::string key) {
    return {Row::Kind::switchRow, std::move(label), std::move(key), 0, {}};
}
Row choice(std::string label, std::string key, int value) {
    return {Row::Kind::choice, std::move(label), std::move(key), value, {}};
}
Row link(std::string label, std::string page) {
    return {Row::Kind::link, std::move(label), std::move(page), 0, {}};
}

}  // namespace

const PageTable& rootTable() {
    static const PageTable table{
        "KavixPreferencesController",
        "Trivel 3",
        {group("Merge Multitasking and Control Center. Access by sliding up from the bottom. Slide an app preview down "
               "to expand it. Slide the Home Screen preview up to close all apps."),
         toggle("Multi-Center", "MultiCenter"), group(), toggle("Quick Switcher", "QuickSwitcher"), group(),
         toggle("Hot Corners", "HotCorners"), group(), link("Advanced Options", "KavixPreferencesOptionsController"),
         group(), link("The Creators", "KavixPreferencesProfileController"), group(), link("Fenwary Support", "")}};
    return table;
}

const PageTable& optionsTable() {
    static const PageTable table{
        "KavixPreferencesOptionsController",
        "Advanced Options",
        {group("Puts Toggles near the bottom for easier one-handed access."),
         toggle("Reachable Display", "ReachabilityMode"),
         group("Hides AirDrop/AirPlay and Track-Seeker."),
         toggle("Minimal Display", "MinimalControlCenterEnabled"),
         choice("Always", "MinimalControlCenterCondition", 0),
         choice("If no Media is Playing", "MinimalControlCenterCondition", 1),
         choice("If AirPlay is undetected", "MinimalControlCenterCondition", 2),
         choice("If AirDrop is Off", "MinimalControlCenterCondition", 4),
         group("Centers the last app when accessing the multitasking display via a swipe up."),
         toggle("Open to Last App", "OpenToLastApp"),
         toggle("Apply to Quick Switcher", "OpenToLastAppWithQS"),
         group("Swipe up near the bottom of the Multi-Center to display. Swipe down to hide."),
         link("Quick Launcher", "KavixPreferencesQuickLauncherController"),
         group("Set a custom action for tapping on the icon in the center of the Multi-Center sliders."),
         link("Slider Actions", "KavixPreferencesSliderActionsController"),
         group(
             "Tap track title to display, swipe left/right to skip tracks, swipe down to dismiss. Hold track title or "
             "album art to open playing app."),
         link("Album Artwork", "KavixPreferencesAlbumArtworkController"),
         group("Swipe up on the Home Screen preview to close all apps in the multitasking display."),
         link("Close All Apps", "KavixPreferencesCloseAllAppsController"),
         group("Display more than six most recent apps."),
         toggle("Unlimited Quick Switcher", "UnlimitedQuickSwitcher"),
         group("Slide further left in Quick Switcher to go to Home Screen."),
         toggle("Access Home Screen", "AccessHomeScreen"),
         group("Pull up further in Quick Switcher to access."),
         toggle("Access App Switcher", "AccessAppSwitcher"),
         group(),
         toggle("Invert Hot Corners", "InvertHotCorners"),
         group("Select apps to disable Hot Corners in."),
         link("Disable in Applications", "KavixPreferencesExceptionsController"),
         group("Enable to place Recent Contacts in Notification Center."),
         toggle("Move Recent Contacts to NC", "PeopleInToday"),
         group("Enabling increases the speed of exiting apps via single-clicking the home button."),
         toggle("Disable Double-Click Home", "DisableHomeDoubleClick"),
         group("Customize your Toggles & Quick Launcher!"),
         link("Ostrel", "")}};
    return table;
}

const PageTable& quickLauncherTable() {
    static const PageTable table{
        "KavixPreferencesQuickLauncherController",
        "Quick Launcher",
        {titled("When No Media is Playing"), choice("Display", "QuickLauncherNotPlaying", 1),
         choice("Do Not Display", "QuickLauncherNotPlaying", 0), choice("Auto-Dismiss", "QuickLauncherNotPlaying", 2),
         titled("When Media is Playing"), choice("Auto-Dismiss", "QuickLauncherIsPlaying", 2),
         choice("Do Not Display", "QuickLauncherIsPlaying", 0), choice("Display", "QuickLauncherIsPlaying", 1),
         titled("Auto-Dismiss"), choice("After 1 second", "QuickLauncherAutoDismissDelay", 1),
         choice("After 3 seconds", "QuickLauncherAutoDismissDelay", 3),
         choice("After 5 seconds", "QuickLauncherAutoDismissDelay", 5),
         choice("After 8 seconds", "QuickLauncherAutoDismissDelay", 8)}};
    return table;
}

const PageTable& sliderActionsTable() {
    static const PageTable table{
        "KavixPreferencesSliderActionsController",
        "Slider Actions",
        {titled("Tap Brightness Icon to:"), choice("Toggle Auto-Brightness", "SliderActionsBrightness", 2),
         choice("Set Brightness to Minimum", "SliderActionsBrightness", 0),
         choice("Set Brightness to Maximum", "SliderActionsBrightness", 1), titled("Tap Volume Icon to:"),
         choice("Switch to Ringer Volume", "SliderActionsVolume", 2),
         choice("Set Volume to Minimum", "SliderActionsVolume", 0),
         choice("Set Volume to Maximum", "SliderActionsVolume", 1), group(),
         toggle("Disable Slider HUD", "SliderActionsDisableHUD")}};
    return table;
}

const PageTable& albumArtworkTable() {
    static const PageTable table{
        "KavixPreferencesAlbumArtworkController",
        "Album Artwork",
        {titled("Auto-Display"), choice("On Play", "AlbumArtworkAutoDisplay", 1),
         choice("On Next", "AlbumArtworkAutoDisplay", 2), choice("On Previous", "AlbumArtworkAutoDisplay", 4),
         titled("Auto-Dismiss"), choice("After 1 second", "AlbumArtworkAutoDismissDelay", 1),
         choice("After 3 seconds", "AlbumArtworkAutoDismissDelay", 3),
         choice("After 5 seconds", "AlbumArtworkAutoDismissDelay", 5),
         choice("After 8 seconds", "AlbumArtworkAutoDismissDelay", 8)}};
    return table;
}

}  // namespace model
