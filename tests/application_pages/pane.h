// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/value.h"
#include "platform/services/app_list.h"
#include "tests/app_list/phone_applications.h"
#include "tests/kit/pane.h"
#include "tests/kit/print.h"

namespace application_pages_test {

using kit::settingsChanged;
using kit::settingsFile;
using kit::settingsNotification;
using kit::settingsNotWritten;
using kit::settingsWritten;

inline constexpr std::string_view exceptionsFile =
    "/var/mobile/Library/Preferences/com.fenwary.trivel3.exceptions.plist";
inline constexpr std::string_view exceptionsNotification = "com.fenwary.trivel3.exceptionsChanged";
inline constexpr std::string_view spared = "CloseAllAppsExceptions";

inline constexpr std::string_view closeAllAppsPage = "KavixPreferencesCloseAllAppsController";
inline constexpr std::string_view exceptionsPage = "KavixPreferencesExceptionsController";

/// A page with application rows, and where its ticks are.
struct TickPage {
    std::string_view className;
    std::string_view file;
    std::string_view notification;
    std::size_t firstApplicationSection;
};

inline constexpr TickPage closeAllApps = {closeAllAppsPage, settingsFile, settingsNotification, 3};
inline constexpr TickPage exceptions = {exceptionsPage, exceptionsFile, exceptionsNotification, 0};
void PrintTo(const TickPage& page, std::ostream* stream);

/// A pane whose ticks are at hand.
class Pane : public kit::Pane {
public:
    using kit::Pane::Pane;

    /// What a file holds, for comparison; null when it is missing or no dictionary.
    platform::Value content(std::string_view file) const;
    /// The ticks of a page, as they are stored; null when there are none.
    platform::Value ticks(const TickPage& page) const;
    /// Puts a page's ticks in place, as another program would, and nothing beside them.
    void setTicks(const TickPage& page, platform::Value ticks);
};

/// A pane that has loaded the app-list bundle, on a phone with two applications of the system, Clock
/// and Maps, and two of the user's, Tides and Zither.
class PaneWithApplications : public Pane {
public:
    PaneWithApplications();
};

inline constexpr std::string_view clockIdentifier = "com.apple.clock";
inline constexpr std::string_view mapsIdentifier = "com.apple.maps";
inline constexpr std::string_view tidesIdentifier = "com.example.tides";
inline constexpr std::string_view zitherIdentifier = "com.example.zither";

/// A dictionary of one entry.
platform::Dictionary only(std::string_view key, platform::Value value);

}  // namespace application_pages_test
