// SPDX-License-Identifier: MIT
#include "pages/features/options_page.h"

#include "pages/features/options_rows.h"

namespace trivel3 {
namespace {

using options::State;

constexpr std::string_view bundlesOfLinks[] = {
    "/System/Library/PreferenceBundles/AppList.bundle",
    "/Library/PreferenceBundles/OstrelSettings.bundle",
};

constexpr std::string_view ostrelPackage = "cydia://package/com.fenwary.ostrel";

constexpr ChoiceRule rules[] = {{options::conditionKey, ChoiceMode::flagSetWithNone, AfterChoice::nothing}};

struct EnabledRule {
    options::Position row;
    bool (*isEnabled)(const State& state);
};

// clang-format off
constexpr EnabledRule enabledRules[] = {
    {options::reachableDisplay,       [](const State& s) { return s.multiCenter; }},
    {options::minimalDisplay,         [](const State& s) { return s.multiCenter; }},
    {options::conditionAlways,        [](const State& s) { return s.multiCenter && s.minimal; }},
    {options::conditionNoMedia,       [](const State& s) { return s.multiCenter && s.minimal; }},
    {options::conditionNoAirPlay,     [](const State& s) { return s.multiCenter && s.minimal && !s.reachable; }},
    {options::conditionNoAirDrop,     [](const State& s) { return s.multiCenter && s.minimal && !s.reachable; }},
    {options::openToLastApp,          [](const State& s) { return s.anyMasterSwitch(); }},
    {options::applyToQuickSwitcher,   [](const State& s) { return s.anyMasterSwitch(); }},
    {options::quickLauncher,          [](const State& s) { return s.multiCenter && !s.minimalWithinReach(); }},
    {options::sliderActions,          [](const State& s) { return s.multiCenter; }},
    {options::albumArtwork,           [](const State& s) { return s.multiCenter; }},
    {options::closeAllApps,           [](const State& s) { return s.multiCenter; }},
    {options::unlimitedQuickSwitcher, [](const State& s) { return s.quickSwitcher; }},
    {options::accessHomeScreen,       [](const State& s) { return s.quickSwitcher; }},
    {options::accessAppSwitcher,      [](const State& s) { return s.quickSwitcher && !s.multiCenter; }},
    {options::invertHotCorners,       [](const State& s) { return s.hotCorners; }},
    {options::disableInApplications,  [](const State& s) { return s.anyMasterSwitch(); }},
    {options::moveRecentContacts,     [](const State& s) { return s.multiCenter; }},
};
// clang-format on

}  // namespace

void KavixPreferencesOptionsController::initialize(platform::Platform& platform) {
    for (std::string_view path : bundlesOfLinks) {
        if (auto bundle = platform.system.bundleWithPath(path)) static_cast<void>(bundle->load());
    }
}

platform::PSListController::Specifiers KavixPreferencesOptionsController::buildSpecifiers() {
    const bool hasOstrel = platform().classes.contains(options::ostrelClass);
    auto table = options::table;
    if (!hasOstrel) table[options::ostrel].detail = {};
    Specifiers built = makeRows(*this, table);
    platform::PSSpecifier& row = *built[options::ostrel];
    row.setProperty_forKey(platform::Value(row.name()), platform::PSPropertyKey::label);
    if (!hasOstrel) {
        row.setProperty_forKey(platform::Value(true), platform::PSPropertyKey::enabled);
        row.action = [this](platform::PSSpecifier& specifier) { ostrelAction(specifier); };
    }
    return built;
}

std::span<const ChoiceRule> KavixPreferencesOptionsController::choiceRules() const {
    return rules;
}

std::optional<platform::Value> KavixPreferencesOptionsController::getPreferences(std::string_view key) const {
    return store().preferenceForKey(key);
}

void KavixPreferencesOptionsController::setPreferences_specifier(const platform::Value& value,
                                                                 platform::PSSpecifier& specifier) {
    KavixPreferencesChoiceController::setPreferences_specifier(value, specifier);
    updateSpecifiers(true);
}

void KavixPreferencesOptionsController::setPreferences_specifier(const platform::Value& value, std::string_view key) {
    store().setPreferenceForKey(value, key);
    updateSpecifiers(true);
}

void KavixPreferencesOptionsController::ostrelAction(platform::PSSpecifier&) {
    platform().application.openURL(ostrelPackage);
}

void KavixPreferencesOptionsController::updateSpecifiers(bool animated) {
    if (masterSpecifiers().empty()) return;
    const State state = options::currentState(platform(), store());
    repairSettings(state);
    updateEnabled(state, animated);
    updatePresence(state, animated);
    updateFooters(state, animated);
}

// Each repair is written every time its condition holds, so that one whose write has failed, or that
// another program has undone, is made again.
void KavixPreferencesOptionsController::repairSettings(const State& state) {
    if (state.quickSwitcher && state.multiCenter) store().setPreferenceForKey(false, "AccessAppSwitcher");
    if (state.minimalWithinReach()) {
        constexpr std::int64_t outOfReach = options::airPlayIsUndetected | options::airDropIsOff;
        const std::int64_t condition = platform::integerValue(store().preferenceForKey(options::conditionKey));
        store().setPreferenceForKey(condition & ~outOfReach, options::conditionKey);
    }
    if (!state.multiCenter) store().setPreferenceForKey(false, "PeopleInToday");
}

void KavixPreferencesOptionsController::updateEnabled(const State& state, bool animated) {
    for (const EnabledRule& rule : enabledRules) {
        setEnabled(masterSpecifiers()[rule.row], rule.isEnabled(state), animated);
    }
}

// Only the conditions and "Apply to Quick Switcher" come back; what the device has no room or use
// for stays away until the rows are loaded anew.
void KavixPreferencesOptionsController::updatePresence(const State& state, bool animated) {
    if (state.isTall) setBlockShown({options::conditionAlways, 4}, state.minimal, options::minimalDisplay, animated);
    if (!state.isTall) {
        removeBlock({options::reachableDisplayGroup, 2}, animated);
        removeBlock({options::minimalDisplayGroup, 6}, animated);
    }
    if (!state.isPhone) {
        removeBlock({options::quickLauncherGroup, 2}, animated);
        removeBlock({options::sliderActionsGroup, 2}, animated);
        removeBlock({options::unlimitedQuickSwitcherGroup, 2}, animated);
        removeBlock({options::moveRecentContactsGroup, 2}, animated);
    }
    setBlockShown({options::applyToQuickSwitcher, 1}, state.opensToLastApp, options::openToLastApp, animated);
}

void KavixPreferencesOptionsController::updateFooters(const State& state, bool animated) {
    const Specifiers& master = masterSpecifiers();
    setFooter(master[options::minimalDisplayGroup],
              state.minimalWithinReach() ? options::footer::minimalWithinReach : options::footer::minimal, animated);
    setFooter(master[options::invertHotCornersGroup],
              state.quickSwitcher ? options::footer::cornersWithQuickSwitcher : options::footer::cornersWithAppSwitcher,
              animated);
}

}  // namespace trivel3
