// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

#include "platform/foundation/value.h"
#include "platform/services/preference_access.h"

namespace trivel3 {

/// Every settings key, in the order in which the add-on knows them too. The kind is part of the
/// contract with the add-on: a boolean true is not the integer 1.
class SettingsCatalogue {
public:
    using Kind = platform::PreferenceAccess::Kind;

    struct Entry {
        std::string_view key;
        Kind kind;
        /// A boolean's or an integer's default; 0 for a dictionary, whose default is the empty one.
        /// Nothing for a setting that reads as nothing until it is first set.
        std::optional<int> defaultNumber;

        /// Newly made.
        std::optional<platform::Value> defaultValue() const;
    };

    // clang-format off
    static constexpr Entry entries[] = {
        {"MultiCenter",                   Kind::boolean,    true},
        {"QuickSwitcher",                 Kind::boolean,    true},
        {"HotCorners",                    Kind::boolean,    true},
        {"ReachabilityMode",              Kind::boolean,    true},
        {"MinimalControlCenterEnabled",   Kind::boolean,    true},
        {"MinimalControlCenterCondition", Kind::integer,    1},
        {"OpenToLastApp",                 Kind::boolean,    false},
        {"QuickLauncherNotPlaying",       Kind::integer,    0},
        {"QuickLauncherIsPlaying",        Kind::integer,    0},
        {"QuickLauncherAutoDismissDelay", Kind::integer,    3},
        {"SliderActionsBrightness",       Kind::integer,    2},
        {"SliderActionsVolume",           Kind::integer,    2},
        {"SliderActionsDisableHUD",       Kind::boolean,    false},
        {"AlbumArtworkAutoDisplay",       Kind::integer,    6},
        {"AlbumArtworkAutoDismissDelay",  Kind::integer,    1},
        {"CloseAllAppsNoConfirmation",    Kind::boolean,    false},
        {"CloseAllAppsBackToHomeScreen",  Kind::boolean,    false},
        {"CloseAllAppsExcludeNowPlaying", Kind::boolean,    true},
        {"CloseAllAppsExceptions",        Kind::dictionary, 0},
        {"UnlimitedQuickSwitcher",        Kind::boolean,    false},
        {"AccessHomeScreen",              Kind::boolean,    false},
        {"AccessAppSwitcher",             Kind::boolean,    false},
        {"InvertHotCorners",              Kind::boolean,    false},
        {"PeopleInToday",                 Kind::boolean,    false},
        {"DisableHomeDoubleClick",        Kind::boolean,    false},
        {"DisableWithKeyboard",           Kind::boolean,    false},  // shown on no page; the add-on reads it
        {"OpenToLastAppWithQS",           Kind::boolean,    std::nullopt},
    };
    // clang-format on

    /// Whether the catalogue has the key. Keys are case-sensitive.
    static constexpr bool has(std::string_view key) {
        // By value: under the sanitizers, g++ asks of each reference whether it is null, which is no constant here.
        for (std::size_t i = 0; i < std::size(entries); ++i) {
            const std::string_view each = entries[i].key;
            if (each == key) return true;
        }
        return false;
    }

    /// A newly made default; nothing for a key that has none.
    static std::optional<platform::Value> defaultForKey(std::string_view key);
};

/// The key of a setting. One that the catalogue does not have does not compile.
class SettingKey {
public:
    // Not explicit: tables name settings by their bare keys.
    consteval SettingKey(const char* key) : _key(key) {
        if (!SettingsCatalogue::has(key)) throw "no such setting";
    }
    constexpr operator std::string_view() const { return _key; }

private:
    std::string_view _key;
};

}  // namespace trivel3
