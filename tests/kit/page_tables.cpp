// SPDX-License-Identifier: MIT
#include "tests/kit/page_tables.h"

#include <algorithm>

namespace kit {
namespace {

using Kind = ExpectedRow::Kind;
using Mode = ExpectedRow::Mode;
using State = const PageState&;

ExpectedRow group(std::string footer = {}) {
    return {.kind = Kind::group, .footer = std::move(footer)};
}

ExpectedRow group(std::string footer, std::string (*now)(State)) {
    return {.kind = Kind::group, .footer = std::move(footer), .footerNow = now};
}

ExpectedRow titled(std::string title) {
    return {.kind = Kind::group, .label = std::move(title)};
}

ExpectedRow toggle(std::string label, std::string key, bool (*usable)(State) = nullptr) {
    return {.kind = Kind::switchRow, .label = std::move(label), .key = std::move(key), .usable = usable};
}

ExpectedRow link(std::string label, std::string page, bool (*usable)(State) = nullptr) {
    return {.kind = Kind::link, .label = std::move(label), .key = std::move(page), .usable = usable};
}

ExpectedRow choice(std::string label, std::string key, int value, bool updatesPage = false) {
    return {.kind = Kind::choice,
            .label = std::move(label),
            .key = std::move(key),
            .value = value,
            .updatesPage = updatesPage};
}

ExpectedRow flag(std::string label, int value) {
    return {.kind = Kind::choice,
            .label = std::move(label),
            .key = "AlbumArtworkAutoDisplay",
            .value = value,
            .mode = Mode::flags,
            .updatesPage = true};
}

ExpectedRow condition(std::string label, int value, bool (*usable)(State)) {
    return {.kind = Kind::choice,
            .label = std::move(label),
            .key = "MinimalControlCenterCondition",
            .value = value,
            .mode = Mode::flagsWithNone,
            .usable = usable};
}

ExpectedRow pictured(ExpectedRow row, std::string image) {
    row.image = std::move(image);
    return row;
}

bool mc(State s) {
    return s.multiCenter;
}
bool qs(State s) {
    return s.quickSwitcher;
}
bool anyOfThree(State s) {
    return s.multiCenter || s.quickSwitcher || s.hotCorners;
}
bool mcAndMe(State s) {
    return s.multiCenter && s.minimal;
}
bool mcAndMeAndNotRe(State s) {
    return s.multiCenter && s.minimal && !s.reachable;
}

std::string quickSwitcherFooter(State s) {
    const std::string pull =
        "Pull up from the bottom left corner of the screen to access, then release your finger on the app you want to "
        "switch to.";
    return s.multiCenter ? pull : pull + " For the standard multitasking display, pull up further.";
}

std::string hotCornersFooter(State s) {
    return s.multiCenter
               ? "Return to the Home Screen by swiping up from the bottom right corner of the screen."
               : "Return to the Home Screen or reveal the multitasking display by swiping up from the bottom right or "
                 "left corners of the screen.";
}

constexpr auto minimalFooter = "Hides AirDrop/AirPlay and Track-Seeker.";

std::string minimalDisplayFooter(State s) {
    return s.minimal && s.reachable ? "Slide up on playback area to dynamically switch between minimal display at will."
                                    : minimalFooter;
}

std::string cornersFooter(State s) {
    return s.quickSwitcher ? "Access the Quick Switcher from the right corner, and the Home Screen from the left."
                           : "Access the App Switcher from the right corner, and the Home Screen from the left.";
}

std::optional<bool> onATallPhoneWhileMinimal(State s) {
    return s.tall ? std::optional(s.minimal) : std::nullopt;
}

// A device's rows go where it has no use for them, and nothing brings them back.
std::optional<bool> goneUnlessTall(State s) {
    return s.tall ? std::nullopt : std::optional(false);
}
std::optional<bool> goneUnlessPhone(State s) {
    return s.phone ? std::nullopt : std::optional(false);
}

}  // namespace

std::span<const ExpectedSetting> expectedSettings() {
    static const ExpectedSetting settings[] = {
        {"MultiCenter", true},
        {"QuickSwitcher", true},
        {"HotCorners", true},
        {"ReachabilityMode", true},
        {"MinimalControlCenterEnabled", true},
        {"MinimalControlCenterCondition", 1},
        {"OpenToLastApp", false},
        {"QuickLauncherNotPlaying", 0},
        {"QuickLauncherIsPlaying", 0},
        {"QuickLauncherAutoDismissDelay", 3},
        {"SliderActionsBrightness", 2},
        {"SliderActionsVolume", 2},
        {"SliderActionsDisableHUD", false},
        {"AlbumArtworkAutoDisplay", 6},
        {"AlbumArtworkAutoDismissDelay", 1},
        {"CloseAllAppsNoConfirmation", false},
        {"CloseAllAppsBackToHomeScreen", false},
        {"CloseAllAppsExcludeNowPlaying", true},
        {"CloseAllAppsExceptions", platform::Dictionary()},
        {"UnlimitedQuickSwitcher", false},
        {"AccessHomeScreen", false},
        {"AccessAppSwitcher", false},
        {"InvertHotCorners", false},
        {"PeopleInToday", false},
        {"DisableHomeDoubleClick", false},
        {"DisableWithKeyboard", false},
    };
    return settings;
}

std::optional<platform::Value> expectedDefault(std::string_view key) {
    const auto found = std::ranges::find(expectedSettings(), key, &ExpectedSetting::key);
    return found == expectedSettings().end() ? std::nullopt : std::optional(found->defaultValue);
}

PageState pageState(bool phone, bool tall,
                    const std::function<std::optional<platform::Value>(std::string_view)>& read) {
    const auto truth = [&read](std::string_view key) { return platform::boolValue(read(key)); };
    const auto number = [&read](std::string_view key) { return platform::integerValue(read(key)); };
    return {.phone = phone,
            .tall = tall,
            .multiCenter = truth("MultiCenter"),
            .quickSwitcher = truth("QuickSwitcher"),
            .hotCorners = truth("HotCorners"),
            .minimal = !tall || truth("MinimalControlCenterEnabled"),
            .reachable = tall && truth("ReachabilityMode"),
            .opensToLastApp = truth("OpenToLastApp"),
            .idle = number("QuickLauncherNotPlaying"),
            .playing = number("QuickLauncherIsPlaying"),
            .events = number("AlbumArtworkAutoDisplay")};
}

const PageTable& rootTable() {
    static const PageTable table{
        "KavixPreferencesController",
        "Trivel 3",
        {group("Merge Multitasking and Control Center. Access by sliding up from the bottom. Slide an app preview down "
               "to expand it. Slide the Home Screen preview up to close all apps."),
         pictured(toggle("Multi-Center", "MultiCenter"), "Multi-Center"), group("", quickSwitcherFooter),
         pictured(toggle("Quick Switcher", "QuickSwitcher"), "QuickSwitcher"), group("", hotCornersFooter),
         pictured(toggle("Hot Corners", "HotCorners"), "HotCorners"), group(),
         pictured(link("Advanced Options", "KavixPreferencesOptionsController"), "Configuration"), group(),
         pictured(link("The Creators", "KavixPreferencesProfileController"), "Creators"), group(),
         pictured(link("Fenwary Support", ""), "Support")}};
    return table;
}

const PageTable& optionsTable() {
    static const PageTable table{
        "KavixPreferencesOptionsController",
        "Advanced Options",
        {group("Puts Toggles near the bottom for easier one-handed access."),
         toggle("Reachable Display", "ReachabilityMode", mc), group(minimalFooter, minimalDisplayFooter),
         toggle("Minimal Display", "MinimalControlCenterEnabled", mc), condition("Always", 0, mcAndMe),
         condition("If no Media is Playing", 1, mcAndMe), condition("If AirPlay is undetected", 2, mcAndMeAndNotRe),
         condition("If AirDrop is Off", 4, mcAndMeAndNotRe),
         group("Centers the last app when accessing the multitasking display via a swipe up."),
         toggle("Open to Last App", "OpenToLastApp", anyOfThree),
         toggle("Apply to Quick Switcher", "OpenToLastAppWithQS", anyOfThree),
         group("Swipe up near the bottom of the Multi-Center to display. Swipe down to hide."),
         link("Quick Launcher", "KavixPreferencesQuickLauncherController",
              [](State s) { return s.multiCenter && !(s.minimal && s.reachable); }),
         group("Set a custom action for tapping on the icon in the center of the Multi-Center sliders."),
         link("Slider Actions", "KavixPreferencesSliderActionsController", mc),
         group(
             "Tap track title to display, swipe left/right to skip tracks, swipe down to dismiss. Hold track title or "
             "album art to open playing app."),
         link("Album Artwork", "KavixPreferencesAlbumArtworkController", mc),
         group("Swipe up on the Home Screen preview to close all apps in the multitasking display."),
         link("Close All Apps", "KavixPreferencesCloseAllAppsController", mc),
         group("Display more than six most recent apps."),
         toggle("Unlimited Quick Switcher", "UnlimitedQuickSwitcher", qs),
         group("Slide further left in Quick Switcher to go to Home Screen."),
         toggle("Access Home Screen", "AccessHomeScreen", qs), group("Pull up further in Quick Switcher to access."),
         toggle("Access App Switcher", "AccessAppSwitcher", [](State s) { return s.quickSwitcher && !s.multiCenter; }),
         group("", cornersFooter),
         toggle("Invert Hot Corners", "InvertHotCorners", [](State s) { return s.hotCorners; }),
         group("Select apps to disable Hot Corners in."),
         link("Disable in Applications", "KavixPreferencesExceptionsController", anyOfThree),
         group("Enable to place Recent Contacts in Notification Center."),
         toggle("Move Recent Contacts to NC", "PeopleInToday", mc),
         group("Enabling increases the speed of exiting apps via single-clicking the home button."),
         toggle("Disable Double-Click Home", "DisableHomeDoubleClick"),
         group("Customize your Toggles & Quick Launcher!"),
         // The sibling product is not installed, so its row leads to no page.
         pictured(link("Ostrel", ""), "Ostrel")},
        {{4, 4, onATallPhoneWhileMinimal},
         {0, 2, goneUnlessTall},
         {2, 6, goneUnlessTall},
         {11, 2, goneUnlessPhone},
         {13, 2, goneUnlessPhone},
         {19, 2, goneUnlessPhone},
         {29, 2, goneUnlessPhone},
         {10, 1, [](State s) { return std::optional(s.opensToLastApp); }}}};
    return table;
}

const PageTable& quickLauncherTable() {
    static const PageTable table{
        "KavixPreferencesQuickLauncherController",
        "Quick Launcher",
        {titled("When No Media is Playing"), choice("Display", "QuickLauncherNotPlaying", 1, true),
         choice("Do Not Display", "QuickLauncherNotPlaying", 0, true),
         choice("Auto-Dismiss", "QuickLauncherNotPlaying", 2, true), titled("When Media is Playing"),
         choice("Auto-Dismiss", "QuickLauncherIsPlaying", 2, true),
         choice("Do Not Display", "QuickLauncherIsPlaying", 0, true),
         choice("Display", "QuickLauncherIsPlaying", 1, true), titled("Auto-Dismiss"),
         choice("After 1 second", "QuickLauncherAutoDismissDelay", 1, true),
         choice("After 3 seconds", "QuickLauncherAutoDismissDelay", 3, true),
         choice("After 5 seconds", "QuickLauncherAutoDismissDelay", 5, true),
         choice("After 8 seconds", "QuickLauncherAutoDismissDelay", 8, true)},
        {{8, 5, [](State s) { return std::optional(s.idle == 2 || s.playing == 2); }}}};
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
        {titled("Auto-Display"), flag("On Play", 1), flag("On Next", 2), flag("On Previous", 4), titled("Auto-Dismiss"),
         choice("After 1 second", "AlbumArtworkAutoDismissDelay", 1),
         choice("After 3 seconds", "AlbumArtworkAutoDismissDelay", 3),
         choice("After 5 seconds", "AlbumArtworkAutoDismissDelay", 5),
         choice("After 8 seconds", "AlbumArtworkAutoDismissDelay", 8)},
        {{4, 5, [](State s) { return std::optional(s.events >= 1); }}}};
    return table;
}

const PageTable* pageTable(std::string_view className) {
    for (const PageTable* table :
         {&rootTable(), &optionsTable(), &quickLauncherTable(), &sliderActionsTable(), &albumArtworkTable()}) {
        if (table->className == className) return table;
    }
    return nullptr;
}

std::vector<std::size_t> expectedPositions(const PageTable& table, const PageState& state) {
    std::vector<std::size_t> positions;
    for (std::size_t position = 0; position < table.rows.size(); ++position) {
        const bool isAway = std::ranges::any_of(table.blocks, [&](const ExpectedBlock& block) {
            return position >= block.start && position < block.start + block.length &&
                   block.wanted(state) == std::optional(false);
        });
        if (!isAway) positions.push_back(position);
    }
    return positions;
}

std::vector<std::string> expectedLabels(const PageTable& table, const PageState& state) {
    std::vector<std::string> labels;
    for (const std::size_t position : expectedPositions(table, state)) {
        const ExpectedRow& row = table.rows[position];
        if (row.kind != Kind::group) labels.push_back(row.label);
    }
    return labels;
}

std::vector<std::string> expectedGreyedLabels(const PageTable& table, const PageState& state) {
    std::vector<std::string> labels;
    for (const std::size_t position : expectedPositions(table, state)) {
        const ExpectedRow& row = table.rows[position];
        if (row.usable && !row.usable(state)) labels.push_back(row.label);
    }
    return labels;
}

std::vector<std::optional<std::string>> expectedFooters(const PageTable& table, const PageState& state) {
    std::vector<std::optional<std::string>> footers;
    for (const std::size_t position : expectedPositions(table, state)) {
        const ExpectedRow& row = table.rows[position];
        if (row.kind != Kind::group) continue;
        const std::string footer = row.footerNow ? row.footerNow(state) : row.footer;
        footers.push_back(footer.empty() ? std::nullopt : std::optional(footer));
    }
    return footers;
}

bool isExpectedChecked(const ExpectedRow& row, std::int64_t current) {
    if (row.mode == Mode::singleValue) return current == row.value;
    if (row.mode == Mode::flagsWithNone && row.value == 0) return current == 0;
    return (current & row.value) != 0;
}

std::int64_t expectedAfterTap(const ExpectedRow& row, std::int64_t current) {
    if (row.mode == Mode::singleValue || row.value == 0) return row.value;
    return (current & row.value) != 0 ? current & ~std::int64_t{row.value} : current | row.value;
}

}  // namespace kit
