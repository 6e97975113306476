// SPDX-License-Identifier: MIT
#include "pages/features/options_page.h"

namespace trivel3 {
namespace {

constexpr std::string_view bundlesOfLinks[] = {
    "/System/Library/PreferenceBundles/AppList.bundle",
    "/Library/PreferenceBundles/OstrelSettings.bundle",
};

constexpr std::string_view ostrelPackage = "cydia://package/com.fenwary.ostrel";

// What the bits of the condition setting stand for; none at all is "always".
enum Condition : int { always = 0, noMediaIsPlaying = 1, airPlayIsUndetected = 2, airDropIsOff = 4 };
constexpr Choice condition = {"MinimalControlCenterCondition", ChoiceMode::flagSetWithNone};

enum Fact : Facts {
    isPhone = 1 << 0,
    isTall = 1 << 1,  ///< a phone whose screen has room for the reachable and minimal displays
    multiCenter = 1 << 2,
    quickSwitcher = 1 << 3,
    hotCorners = 1 << 4,
    minimal = 1 << 5,    ///< taken as on where it cannot be chosen
    reachable = 1 << 6,  ///< taken as off where it cannot be chosen
    opensToLastApp = 1 << 7,
};

constexpr Rule phone = all<isPhone>;
constexpr Rule tall = all<isTall>;
constexpr Rule mc = all<multiCenter>;
constexpr Rule qs = all<quickSwitcher>;
constexpr Rule hc = all<hotCorners>;
constexpr Rule me = all<minimal>;
constexpr Rule ol = all<opensToLastApp>;
constexpr Rule mcOrQsOrHc = any<multiCenter | quickSwitcher | hotCorners>;
constexpr Rule qsAndMc = all<quickSwitcher | multiCenter>;
constexpr Rule mcAndMe = all<multiCenter | minimal>;
constexpr Rule meAndRe = all<minimal | reachable>;
constexpr Rule mcAndMeNotRe = [](Facts facts) { return mcAndMe(facts) && !any<reachable>(facts); };
constexpr Rule mcNotMeAndRe = [](Facts facts) { return mc(facts) && !meAndRe(facts); };
constexpr Rule qsNotMc = [](Facts facts) { return qs(facts) && !mc(facts); };

enum Block : Blocks {
    reachableDisplay = 1 << 0,
    minimalDisplay = 1 << 1,
    conditions = 1 << 2,
    withSwitcher = 1 << 3,
    launcher = 1 << 4,
    sliders = 1 << 5,
    unlimited = 1 << 6,
    contacts = 1 << 7,
};

constexpr Row rows[] = {
    group("Puts Toggles near the bottom for easier one-handed access.").in(reachableDisplay),
    toggle("Reachable Display", "ReachabilityMode").usableIf(mc).in(reachableDisplay),
    group("Hides AirDrop/AirPlay and Track-Seeker.")
        .in(minimalDisplay)
        .footerIf(meAndRe, "Slide up on playback area to dynamically switch between minimal display at will."),
    toggle("Minimal Display", "MinimalControlCenterEnabled").usableIf(mc).in(minimalDisplay),
    choice("Always", condition, always).usableIf(mcAndMe).in(minimalDisplay | conditions),
    choice("If no Media is Playing", condition, noMediaIsPlaying).usableIf(mcAndMe).in(minimalDisplay | conditions),
    choice("If AirPlay is undetected", condition, airPlayIsUndetected)
        .usableIf(mcAndMeNotRe)
        .in(minimalDisplay | conditions),
    choice("If AirDrop is Off", condition, airDropIsOff).usableIf(mcAndMeNotRe).in(minimalDisplay | conditions),
    group("Centers the last app when accessing the multitasking display via a swipe up."),
    toggle("Open to Last App", "OpenToLastApp").usableIf(mcOrQsOrHc),
    toggle("Apply to Quick Switcher", "OpenToLastAppWithQS").usableIf(mcOrQsOrHc).in(withSwitcher),
    group("Swipe up near the bottom of the Multi-Center to display. Swipe down to hide.").in(launcher),
    link("Quick Launcher", "KavixPreferencesQuickLauncherController").usableIf(mcNotMeAndRe).in(launcher),
    group("Set a custom action for tapping on the icon in the center of the Multi-Center sliders.").in(sliders),
    link("Slider Actions", "KavixPreferencesSliderActionsController").usableIf(mc).in(sliders),
    group("Tap track title to display, swipe left/right to skip tracks, swipe down to dismiss. Hold track title "
          "or album art to open playing app."),
    link("Album Artwork", "KavixPreferencesAlbumArtworkController").usableIf(mc),
    group("Swipe up on the Home Screen preview to close all apps in the multitasking display."),
    link("Close All Apps", "KavixPreferencesCloseAllAppsController").usableIf(mc),
    group("Display more than six most recent apps.").in(unlimited),
    toggle("Unlimited Quick Switcher", "UnlimitedQuickSwitcher").usableIf(qs).in(unlimited),
    group("Slide further left in Quick Switcher to go to Home Screen."),
    toggle("Access Home Screen", "AccessHomeScreen").usableIf(qs),
    group("Pull up further in Quick Switcher to access."),
    toggle("Access App Switcher", "AccessAppSwitcher").usableIf(qsNotMc),
    group().footerIf(qs, "Access the Quick Switcher from the right corner, and the Home Screen from the left.",
                     "Access the App Switcher from the right corner, and the Home Screen from the left."),
    toggle("Invert Hot Corners", "InvertHotCorners").usableIf(hc),
    group("Select apps to disable Hot Corners in."),
    link("Disable in Applications", "KavixPreferencesExceptionsController").usableIf(mcOrQsOrHc),
    group("Enable to place Recent Contacts in Notification Center.").in(contacts),
    toggle("Move Recent Contacts to NC", "PeopleInToday").usableIf(mc).in(contacts),
    group("Enabling increases the speed of exiting apps via single-clicking the home button."),
    toggle("Disable Double-Click Home", "DisableHomeDoubleClick"),
    group("Customize your Toggles & Quick Launcher!"),
    link("Ostrel", "OstrelPrefsController").withImage("Ostrel"),
};

// Only the conditions and "Apply to Quick Switcher" come back; what the device has no room or use
// for stays away until the rows are loaded anew.
constexpr Presence presence[] = {
    {.block = conditions, .shownWhen = me, .onlyWhen = tall, .comesBack = true},
    {.block = reachableDisplay, .shownWhen = tall},
    {.block = minimalDisplay, .shownWhen = tall},
    {.block = launcher, .shownWhen = phone},
    {.block = sliders, .shownWhen = phone},
    {.block = unlimited, .shownWhen = phone},
    {.block = contacts, .shownWhen = phone},
    {.block = withSwitcher, .shownWhen = ol, .comesBack = true},
};

constexpr PageTable page(rows, presence);

Facts deviceFacts(const platform::Platform& platform) {
    constexpr double leastTallHeight = 568;
    constexpr int phoneIdiom = platform::UIDevice::idiomPhone;
    if (platform.device.userInterfaceIdiom.value_or(phoneIdiom) != phoneIdiom) return 0;
    return platform.screen.bounds.height >= leastTallHeight ? isPhone | isTall : isPhone;
}

}  // namespace

void KavixPreferencesOptionsController::initialize(platform::Platform& platform) {
    for (std::string_view path : bundlesOfLinks) {
        if (auto bundle = platform.system.bundleWithPath(path)) static_cast<void>(bundle->load());
    }
}

const PageTable& KavixPreferencesOptionsController::pageTable() const {
    return page;
}

platform::PSListController::Specifiers KavixPreferencesOptionsController::buildSpecifiers() {
    Specifiers built = KavixPreferencesListController::buildSpecifiers();
    platform::PSSpecifier& ostrel = *built.back();
    ostrel.setProperty_forKey(platform::Value(ostrel.name()), platform::PSPropertyKey::label);
    if (ostrel.detailControllerClass().empty()) {
        ostrel.setProperty_forKey(platform::Value(true), platform::PSPropertyKey::enabled);
        ostrel.action = [this](platform::PSSpecifier& specifier) { ostrelAction(specifier); };
    }
    return built;
}

std::optional<platform::Value> KavixPreferencesOptionsController::getPreferences(std::string_view key) const {
    return store().preferenceForKey(key);
}

void KavixPreferencesOptionsController::setPreferences_specifier(const platform::Value& value,
                                                                 platform::PSSpecifier& specifier) {
    KavixPreferencesListController::setPreferences_specifier(value, specifier);
    updateSpecifiers(true);
}

void KavixPreferencesOptionsController::setPreferences_specifier(const platform::Value& value, std::string_view key) {
    store().setPreferenceForKey(value, key);
    updateSpecifiers(true);
}

void KavixPreferencesOptionsController::ostrelAction(platform::PSSpecifier&) {
    platform().application.openURL(ostrelPackage);
}

Facts KavixPreferencesOptionsController::readFacts() const {
    Facts facts = deviceFacts(platform());
    const auto read = [&](Fact fact, SettingKey key) {
        if (isOn(key)) facts |= fact;
    };
    read(multiCenter, "MultiCenter");
    read(quickSwitcher, "QuickSwitcher");
    read(hotCorners, "HotCorners");
    if (tall(facts)) {
        read(minimal, "MinimalControlCenterEnabled");
        read(reachable, "ReachabilityMode");
    } else {
        facts |= minimal;
    }
    read(opensToLastApp, "OpenToLastApp");
    return facts;
}

// Each repair is written every time its condition holds, so that one whose write has failed, or that
// another program has undone, is made again.
void KavixPreferencesOptionsController::repair(Facts facts) {
    const auto turnOff = [this](SettingKey key) { store().setPreferenceForKey(false, key); };
    if (qsAndMc(facts)) turnOff("AccessAppSwitcher");
    if (meAndRe(facts)) {
        store().changePreferenceForKey(condition.key, [](std::optional<platform::Value> held) {
            constexpr std::int64_t outOfReach = airPlayIsUndetected | airDropIsOff;
            if (!held) held = SettingsCatalogue::defaultForKey(condition.key);
            return platform::Value(platform::integerValue(held) & ~outOfReach);
        });
    }
    if (!mc(facts)) turnOff("PeopleInToday");
}

}  // namespace trivel3

template void platform::addClass<trivel3::KavixPreferencesOptionsController>(ClassRegistry& classes);
