// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/value.h"
#include "tests/kit/print.h"
#include "tests/kit/test_platform.h"

namespace pages_test {

inline constexpr std::string_view settingsFile = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";

inline constexpr std::string_view rootPage = "KavixPreferencesController";
inline constexpr std::string_view optionsPage = "KavixPreferencesOptionsController";
inline constexpr std::string_view quickLauncherPage = "KavixPreferencesQuickLauncherController";
inline constexpr std::string_view sliderActionsPage = "KavixPreferencesSliderActionsController";
inline constexpr std::string_view albumArtworkPage = "KavixPreferencesAlbumArtworkController";

/// A platform that knows the pane's classes.
class Pane : public kit::TestPlatform {
public:
    explicit Pane(kit::Shape shape = kit::tallPhone, std::string systemImage = kit::stagedSystemImage());

    /// Puts the settings file in place, as another program would.
    void setFile(const platform::Dictionary& settings) { phone.put(settingsFile, settings); }
    /// As `setFile`, for one key; the others stay.
    void setInFile(std::string_view key, platform::Value value);

    /// What the settings file holds; nothing when it is missing or no dictionary.
    std::optional<platform::Dictionary> file() const { return phone.dictionary(settingsFile); }
    std::optional<platform::Value> stored(std::string_view key) const;
    /// The whole file, for comparison; null when there is none.
    platform::Value fileValue() const;

    /// Opens a page and forgets what that did.
    platform::PSListController& openQuietly(std::string_view className);
};

// The two events of one settings write.
kit::Event settingsWritten();
kit::Event settingsNotWritten();
kit::Event settingsChanged();

}  // namespace pages_test
