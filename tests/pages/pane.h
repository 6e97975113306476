// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "platform/foundation/value.h"
#include "tests/kit/page_tables.h"
#include "tests/kit/pane.h"
#include "tests/kit/print.h"

namespace pages_test {

using kit::settingsChanged;
using kit::settingsFile;
using kit::settingsNotWritten;
using kit::settingsWritten;

inline constexpr std::string_view rootPage = "KavixPreferencesController";
inline constexpr std::string_view optionsPage = "KavixPreferencesOptionsController";
inline constexpr std::string_view quickLauncherPage = "KavixPreferencesQuickLauncherController";
inline constexpr std::string_view sliderActionsPage = "KavixPreferencesSliderActionsController";
inline constexpr std::string_view albumArtworkPage = "KavixPreferencesAlbumArtworkController";

/// A pane whose settings file is at hand.
class Pane : public kit::Pane {
public:
    using kit::Pane::Pane;

    /// Puts the settings file in place, as another program would.
    void setFile(const platform::Dictionary& settings) { phone.put(settingsFile, settings); }
    /// As `setFile`, for one key; the others stay.
    void setInFile(std::string_view key, platform::Value value);

    /// What the settings file holds; nothing when it is missing or no dictionary.
    std::optional<platform::Dictionary> file() const { return phone.dictionary(settingsFile); }
    std::optional<platform::Value> stored(std::string_view key) const;
    /// The whole file, for comparison; null when there is none.
    platform::Value fileValue() const;
};

/// Expects that a newly made page has the table's rows, each bound as its kind is.
void expectRows(Pane& pane, const kit::PageTable& table);

}  // namespace pages_test
