// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/ui/view_controller.h"

namespace hosts {

/// A row of a page as the page's list has it: no cell is produced.
struct PaneRow {
    std::vector<std::string> page;  ///< titles of the links that lead there from the root page
    std::string pageTitle;
    std::string label;
    std::optional<std::string> header;  ///< of its group
    std::optional<std::string> footer;
    std::optional<std::string> key;     ///< the setting that it is a switch of, or stands for a value of
    std::optional<std::int64_t> value;  ///< the number that it stands for; nothing for a row that is no choice
    bool isFlag = false;                ///< whether it can hold together with its fellows, and stands for a bit
    bool isEnabled = true;
    bool isLink = false;
    /// The application that it stands for, by its identifier, and whether its cell is checked.
    std::optional<std::string> application;
    bool isChecked = false;
};

/// The rows that the page shows, from the top; none of a page that is no list.
std::vector<PaneRow> rowsOfPage(const std::vector<std::string>& titles, platform::UIViewController& page);

}  // namespace hosts
