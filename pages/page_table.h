// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/list/specifier.h"
#include "store/settings_catalogue.h"

/// What a page says of its rows: a table of them, each with its rules, made once and for all when the
/// program is compiled.
namespace trivel3 {

/// What a page's rows depend on, a bit each: the page says which bit stands for what.
using Facts = unsigned;
using Rule = bool (*)(Facts facts);

template <Facts wanted>
constexpr bool all(Facts facts) {
    return (facts & wanted) == wanted;
}

template <Facts wanted>
constexpr bool any(Facts facts) {
    return (facts & wanted) != 0;
}

/// Runs of rows that come and go together, a bit each, named by the page.
using Blocks = unsigned;

/// How the value of a choice row stands to that of its setting.
enum class ChoiceMode {
    /// Checked when the setting has the row's value; a tap stores it.
    singleValue,
    /// Checked when the setting has the row's bit; a tap toggles that bit. A row of value 0 is never
    /// checked; a tap on it clears all bits.
    flagSet,
    /// A flag set whose row of value 0 is checked when no bit at all is set.
    flagSetWithNone,
};

/// Whether a row that stands for `value` is checked while the setting is `current`.
constexpr bool isChoiceChecked(ChoiceMode mode, std::int64_t current, std::int64_t value) {
    if (mode == ChoiceMode::singleValue) return current == value;
    if (mode == ChoiceMode::flagSetWithNone && value == 0) return current == 0;
    return (current & value) != 0;
}

/// The setting after a tap on such a row.
constexpr std::int64_t settingAfterChoice(ChoiceMode mode, std::int64_t current, std::int64_t value) {
    if (mode == ChoiceMode::singleValue || value == 0) return value;
    return (current & value) != 0 ? current & ~value : current | value;
}

/// What follows a tap that has changed the setting, besides the redraw of the row's section.
enum class AfterChoice { nothing, updateSpecifiers };

/// A setting that is chosen by rows.
struct Choice {
    SettingKey key;
    ChoiceMode mode = ChoiceMode::singleValue;
    AfterChoice after = AfterChoice::nothing;
};

/// One line of a page's table. Made by the functions below, one for each kind of row; what a kind has
/// no use for stays empty.
struct Row {
    platform::PSCellType kind = platform::PSCellType::group;
    std::string_view label = {};   ///< a group's title
    std::string_view key = {};     ///< a switch's or a choice's setting
    std::string_view detail = {};  ///< a link's page class
    std::string_view image = {};
    std::string_view footer = {};  ///< a group's, as it is built
    int value = 0;                 ///< a choice's
    ChoiceMode mode = {};
    AfterChoice after = {};

    Blocks blocks = 0;
    Rule usable = nullptr;  ///< null for a row that is never greyed
    Rule footerRule = nullptr;
    std::string_view footerThen = {};
    std::string_view footerElse = {};

    constexpr Row withImage(std::string_view name) const {
        Row row = *this;
        row.image = name;
        return row;
    }
    /// The row is one of these blocks'.
    constexpr Row in(Blocks bits) const {
        Row row = *this;
        row.blocks = bits;
        return row;
    }
    /// Greyed while the rule does not hold.
    constexpr Row usableIf(Rule rule) const {
        Row row = *this;
        row.usable = rule;
        return row;
    }
    /// The group's footer while the rule holds, and while it does not: without the second, the one that
    /// it is built with. A group that is built without one has none until the page's first update.
    constexpr Row footerIf(Rule rule, std::string_view text, std::string_view otherwise = {}) const {
        Row row = *this;
        row.footerRule = rule;
        row.footerThen = text;
        row.footerElse = otherwise.empty() ? footer : otherwise;
        return row;
    }
};

constexpr Row group(std::string_view footer = {}) {
    return {.footer = footer};
}

constexpr Row titledGroup(std::string_view title) {
    return {.label = title};
}

/// A switch over a setting.
constexpr Row toggle(std::string_view label, SettingKey key) {
    return {.kind = platform::PSCellType::switchCell, .label = label, .key = key};
}

/// A row that stands for one value, or one flag, of a setting.
constexpr Row choice(std::string_view label, const Choice& setting, int value) {
    return {.kind = platform::PSCellType::listItem,
            .label = label,
            .key = setting.key,
            .value = value,
            .mode = setting.mode,
            .after = setting.after};
}

/// A link to the page of the class `detail`; without one, a row for an action.
constexpr Row link(std::string_view label, std::string_view detail = {}) {
    return {.kind = platform::PSCellType::link, .label = label, .detail = detail};
}

/// When a block is on the page.
struct Presence {
    Blocks block;
    Rule shownWhen;
    /// Where it does not hold, the block stays as it is; null for always.
    Rule onlyWhen = nullptr;
    /// Otherwise a block that has gone stays away until the page's rows are loaded anew.
    bool comesBack = false;
};

/// Where a block's rows stand in its table.
struct Run {
    std::size_t start = 0;
    std::size_t length = 0;
};

/// Which rows of a page answer to taps as choices.
enum class ChoiceRows {
    ofTheTablesKeys,
    /// Every row: one without a key has a setting that reads as 0, and stands for 0.
    all,
};

/// A page's rows, in their order, and its blocks, in that in which their presence is settled.
class PageTable {
public:
    /// Does not compile unless each block is one run of rows, and one that comes back has a row ahead of
    /// it to come back after.
    consteval PageTable(std::span<const Row> tableRows, std::span<const Presence> tablePresence = {},
                        ChoiceRows choiceRows = ChoiceRows::ofTheTablesKeys)
        : rows(tableRows), presence(tablePresence), choices(choiceRows) {
        for (const Presence& each : presence) {
            const Run run = runOf(each.block);
            std::size_t bearers = 0;
            for (const Row& row : rows)
                bearers += (row.blocks & each.block) != 0 ? 1 : 0;
            if (run.length == 0 || run.length != bearers) throw "a block is one run of rows";
            if (each.comesBack && run.start == 0) throw "a block comes back after a row";
        }
    }

    /// The first run of rows that bear the block's bit.
    constexpr Run runOf(Blocks block) const {
        Run run;
        while (run.start < rows.size() && (rows[run.start].blocks & block) == 0)
            ++run.start;
        while (run.start + run.length < rows.size() && (rows[run.start + run.length].blocks & block) != 0)
            ++run.length;
        return run;
    }

    std::span<const Row> rows;
    std::span<const Presence> presence;
    ChoiceRows choices;
};

/// What a choice row keeps in its user info.
namespace ChoiceInfo {
inline constexpr std::string_view identifier = "identifier";  ///< the settings key
inline constexpr std::string_view value = "value";            ///< the integer that the row stands for
}  // namespace ChoiceInfo

}  // namespace trivel3
