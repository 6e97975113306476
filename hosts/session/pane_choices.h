// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/opened_phone.h"
#include "platform/foundation/result.h"
#include "platform/services/file_system.h"

namespace hosts {

/// The rows of the pane's pages that stand for the values of one setting.
struct PaneChoices {
    struct Row {
        std::string label;
        std::int64_t value = 0;
    };

    std::string key;
    std::vector<Row> rows;  ///< in the order of their page
    bool areFlags = false;  ///< whether rows can hold together, each standing for a bit

    /// Whether a row stands for the number, or several together do.
    bool standFor(std::int64_t number) const;

    /// The number that the text names: the label of a row, in any case, or those of flags with "+" between. Nothing
    /// where it names no row; a problem where one of several names is none, or they cannot hold together.
    platform::Result<std::optional<std::int64_t>> numberNamed(std::string_view text) const;

    /// "0, 1 or 2", and "0 (None), 1 (Play/Pause)", for messages.
    std::string numbers() const;
    std::string names() const;
};

/// All of them, as the pages of a phone that has stored nothing show them. What a page shows is what counts: nothing
/// else says which rows there are, and which of them hold together.
std::vector<PaneChoices> choicesOfPane(OpenedPhone& opened);
/// The same as the pages of a phone with these files show them.
std::vector<PaneChoices> choicesShown(OpenedPhone& opened, const platform::FileSystem& files);

}  // namespace hosts
