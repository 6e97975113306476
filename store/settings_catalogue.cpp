// SPDX-License-Identifier: MIT
#include "store/settings_catalogue.h"

#include <algorithm>

namespace trivel3 {
namespace {

constexpr auto boolean = SettingsCatalogue::Kind::boolean;
constexpr auto integer = SettingsCatalogue::Kind::integer;
constexpr auto dictionary = SettingsCatalogue::Kind::dictionary;

// clang-format off
constexpr SettingsCatalogue::Entry catalogue[] = {
    {"MultiCenter",                   boolean,    true},
    {"QuickSwitcher",                 boolean,    true},
    {"HotCorners",                    boolean,    true},
    {"ReachabilityMode",              boolean,    true},
    {"MinimalControlCenterEnabled",   boolean,    true},
    {"MinimalControlCenterCondition", integer,    1},
    {"OpenToLastApp",                 boolean,    false},
    {"QuickLauncherNotPlaying",       integer,    0},
    {"QuickLauncherIsPlaying",        integer,    0},
    {"QuickLauncherAutoDismissDelay", integer,    3},
    {"SliderActionsBrightness",       integer,    2},
    {"SliderActionsVolume",           integer,    2},
    {"SliderActionsDisableHUD",       boolean,    false},
    {"AlbumArtworkAutoDisplay",       integer,    6},
    {"AlbumArtworkAutoDismissDelay",  integer,    1},
    {"CloseAllAppsNoConfirmation",    boolean,    false},
    {"CloseAllAppsBackToHomeScreen",  boolean,    false},
    {"CloseAllAppsExcludeNowPlaying", boolean,    true},
    {"CloseAllAppsExceptions",        dictionary, 0},
    {"UnlimitedQuickSwitcher",        boolean,    false},
    {"AccessHomeScreen",              boolean,    false},
    {"AccessAppSwitcher",             boolean,    false},
    {"InvertHotCorners",              boolean,    false},
    {"PeopleInToday",                 boolean,    false},
    {"DisableHomeDoubleClick",        boolean,    false},
    {"DisableWithKeyboard",           boolean,    false},  // shown on no page; the add-on reads it
};
// clang-format on

}  // namespace

platform::Value SettingsCatalogue::Entry::defaultValue() const {
    switch (kind) {
        case Kind::boolean:
            return platform::Value(defaultNumber != 0);
        case Kind::integer:
            return platform::Value(defaultNumber);
        case Kind::dictionary:
            break;
    }
    return platform::Value(platform::Dictionary());
}

std::span<const SettingsCatalogue::Entry> SettingsCatalogue::entries() {
    return catalogue;
}

std::optional<platform::Value> SettingsCatalogue::defaultForKey(std::string_view key) {
    auto found = std::ranges::find(catalogue, key, &Entry::key);
    if (found == std::end(catalogue)) return std::nullopt;
    return found->defaultValue();
}

}  // namespace trivel3
