// SPDX-License-Identifier: MIT
#include "fuzz/session/page_rows.h"

#include <algorithm>
#include <cstddef>

#include "tests/kit/page_tables.h"

namespace fuzz {
namespace {

using kit::PageTable;
using Row = kit::ExpectedRow;

bool mayBeAway(const PageTable& table, std::size_t position) {
    return std::ranges::any_of(table.blocks, [position](const kit::ExpectedBlock& block) {
        return position >= block.start && position < block.start + block.length;
    });
}

bool isPartOf(const PageTable& table, const std::vector<std::string>& labels) {
    auto next = labels.begin();
    for (std::size_t position = 0; position < table.rows.size(); ++position) {
        const Row& row = table.rows[position];
        if (row.kind == Row::Kind::group) continue;
        if (next != labels.end() && *next == row.label) {
            ++next;
        } else if (!mayBeAway(table, position)) {
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
                                                     "KavixPreferencesOptionsController",
                                                     "KavixPreferencesQuickLauncherController",
                                                     "KavixPreferencesSliderActionsController",
                                                     "KavixPreferencesAlbumArtworkController",
                                                     "KavixPreferencesCloseAllAppsController",
                                                     "KavixPreferencesExceptionsController"};
    return names;
}

bool mayShow(std::string_view page, const std::vector<std::string>& labels) {
    if (const auto* rows = applicationRows(page)) return labels == *rows;
    const PageTable* table = kit::pageTable(page);
    return table && isPartOf(*table, labels);
}

}  // namespace fuzz
