// SPDX-License-Identifier: MIT
#include "fuzz/session/page_rows.h"

#include <algorithm>
#include <cstddef>

#include "tests/model/page_tables.h"

namespace fuzz {
namespace {

using model::PageTable;
using model::Row;

/// Positions in a page's table, and how many from there on.
struct Block {
    std::string_view page;
    std::size_t start;
    std::size_t length;
};

constexpr std::string_view optionsPage = "KavixPreferencesOptionsController";

constexpr Block blocksThatComeAndGo[] = {
    {optionsPage, 0, 8},
    {optionsPage, 10, 1},
    {optionsPage, 11, 4},
    {optionsPage, 19, 2},
    {optionsPage, 29, 2},
    {"KavixPreferencesQuickLauncherController", 8, 5},
    {"KavixPreferencesAlbumArtworkController", 4, 5},
};

bool mayBeAway(std::string_view page, std::size_t position) {
    return std::ranges::any_of(blocksThatComeAndGo, [&](const Block& block) {
        return block.page == page && position >= block.start && position < block.start + block.length;
    });
}

bool isPartOf(const PageTable& table, const std::vector<std::string>& labels) {
    auto next = labels.begin();
    for (std::size_t position = 0; position < table.rows.size(); ++position) {
        const Row& row = table.rows[position];
        if (row.kind == Row::Kind::group) continue;
        if (next != labels.end() && *next == row.label) {
            ++next;
        } else if (!mayBeAway(table.className, position)) {
            return false;
        }
    }
    return next == labels.end();
}

const std::vector<std::string>* applicationRows(std::string_view page) {
    static const std::vector<std::string> closeAllApps{"Auto-Close All Apps",
                                                       "Go Home upon Close All",
                                                       "Exclude Currently Playing",
                                                       "Clock",
                                                       "Maps",
                                                       "Tides",
                                                       "Zither"};
    static const std::vector<std::string> exceptions{"Clock", "Maps", "Tides", "Zither"};
    if (page == "KavixPreferencesCloseAllAppsController") return &closeAllApps;
    return page == "KavixPreferencesExceptionsController" ? &exceptions : nullptr;
}

}  // namespace

const std::vector<std::string_view>& pageNames() {
    static const std::vector<std::string_view> names{"KavixPreferencesController",
                                                     optionsPage,
                                                     "KavixPreferencesQuickLauncherController",
                                                     "KavixPreferencesSliderActionsController",
                                                     "KavixPreferencesAlbumArtworkController",
                                                     "KavixPreferencesCloseAllAppsController",
                                                     "KavixPreferencesExceptionsController"};
    return names;
}

bool mayShow(std::string_view page, const std::vector<std::string>& labels) {
    if (const auto* rows = applicationRows(page)) return labels == *rows;
    for (const PageTable* table : {&model::rootTable(), &model::optionsTable(), &model::quickLauncherTable(),
                                   &model::sliderActionsTable(), &model::albumArtworkTable()}) {
        if (table->className == page) return isPartOf(*table, labels);
    }
    return false;
}

}  // namespace fuzz
