// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/value.h"

/// The settings and the pages, written down once more by hand: what tests expect must not be learnt from
/// the pane.
namespace kit {

struct ExpectedSetting {
    std::string key;
    /// Its kind is the setting's.
    platform::Value defaultValue;
};

/// Those that have a default, in their order.
std::span<const ExpectedSetting> expectedSettings();
/// The one that has none: a boolean.
inline constexpr std::string_view settingWithoutDefault = "OpenToLastAppWithQS";
/// Nothing for any other key.
std::optional<platform::Value> expectedDefault(std::string_view key);

/// What the pages' looks depend on.
struct PageState {
    bool phone = true;
    bool tall = true;
    bool multiCenter = true;
    bool quickSwitcher = true;
    bool hotCorners = true;
    bool minimal = true;     ///< on where the device is not tall
    bool reachable = false;  ///< off where the device is not tall
    bool opensToLastApp = false;
    std::int64_t idle = 0;     ///< what the Quick Launcher does when no media is playing
    std::int64_t playing = 0;  ///< and when some is
    std::int64_t events = 0;   ///< those that show the album artwork
};

/// The state by what reading a key gives.
PageState pageState(bool phone, bool tall, const std::function<std::optional<platform::Value>(std::string_view)>& read);

struct ExpectedRow {
    enum class Kind { group, switchRow, choice, link };
    enum class Mode { singleValue, flags, flagsWithNone };

    Kind kind = Kind::group;
    std::string label = {};  ///< a group's title
    std::string key = {};    ///< a switch's or choice's setting; a link's page class
    int value = 0;           ///< a choice's value
    Mode mode = Mode::singleValue;
    bool updatesPage = false;  ///< a choice's, after a tap that changed the setting
    std::string image = {};
    std::string footer = {};  ///< a group's, when it is built

    /// Null for rows that are never greyed.
    bool (*usable)(const PageState& state) = nullptr;
    /// Null for groups whose footer stays.
    std::string (*footerNow)(const PageState& state) = nullptr;
};

/// Rows that come and go together.
struct ExpectedBlock {
    std::size_t start;
    std::size_t length;
    /// Nothing where the block stays as it is.
    std::optional<bool> (*wanted)(const PageState& state);
};

struct PageTable {
    std::string className;
    std::string title;
    std::vector<ExpectedRow> rows;
    /// In the order in which they come and go.
    std::vector<ExpectedBlock> blocks = {};
};

const PageTable& rootTable();
const PageTable& optionsTable();
const PageTable& quickLauncherTable();
const PageTable& sliderActionsTable();
const PageTable& albumArtworkTable();
/// All of the above; null for any other class.
const PageTable* pageTable(std::string_view className);

/// Which of the table's rows a page shows that was opened in this state, and that has seen no other.
std::vector<std::size_t> expectedPositions(const PageTable& table, const PageState& state);
std::vector<std::string> expectedLabels(const PageTable& table, const PageState& state);
std::vector<std::string> expectedGreyedLabels(const PageTable& table, const PageState& state);
/// Of each section, as on the screen.
std::vector<std::optional<std::string>> expectedFooters(const PageTable& table, const PageState& state);

/// Whether the row is checked while its setting is `current`.
bool isExpectedChecked(const ExpectedRow& row, std::int64_t current);
/// The setting after a tap on it.
std::int64_t expectedAfterTap(const ExpectedRow& row, std::int64_t current);

}  // namespace kit
