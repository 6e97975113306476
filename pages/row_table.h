// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

#include "pages/page_controller.h"

namespace trivel3 {

/// One line of a page's row table. Made by the functions below, one for each kind of row; texts that
/// a kind has no use for stay empty.
struct RowDescription {
    platform::PSCellType kind = platform::PSCellType::group;
    std::string_view label = {};
    std::string_view key = {};
    std::string_view footer = {};
    std::string_view image = {};
    std::string_view detail = {};
    int value = 0;
};

constexpr RowDescription groupRow(std::string_view footer = {}) {
    return {.footer = footer};
}

constexpr RowDescription titledGroupRow(std::string_view title) {
    return {.label = title};
}

/// A switch over the setting `key`.
constexpr RowDescription switchRow(std::string_view label, std::string_view key, std::string_view image = {}) {
    return {.kind = platform::PSCellType::switchCell, .label = label, .key = key, .image = image};
}

/// A row that stands for one value, or one flag, of the setting `key`.
constexpr RowDescription choiceRow(std::string_view label, std::string_view key, int value) {
    return {.kind = platform::PSCellType::listItem, .label = label, .key = key, .value = value};
}

/// A link to the page of the class `detail`; without one, a row for an action.
constexpr RowDescription linkRow(std::string_view label, std::string_view detail, std::string_view image = {}) {
    return {.kind = platform::PSCellType::link, .label = label, .image = image, .detail = detail};
}

/// Makes the rows of a table for a page, in order.
platform::PSListController::Specifiers makeRows(KavixPreferencesPageController& page,
                                                std::span<const RowDescription> table);

/// What a choice row keeps in its user info.
namespace ChoiceInfo {
inline constexpr std::string_view identifier = "identifier";  ///< the settings key
inline constexpr std::string_view value = "value";            ///< the integer that the row stands for
}  // namespace ChoiceInfo

}  // namespace trivel3
