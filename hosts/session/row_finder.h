// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/ui/index_path.h"
#include "platform/ui/view_controller.h"

namespace hosts {

/// A row's label and place, told without producing the row's cell where the page is a list.
struct RowPlace {
    std::string label;
    platform::NSIndexPath path;
};

/// Every row that the page shows now, from the top.
std::vector<RowPlace> rowPlaces(platform::UIViewController& page);

/// The places of the rows that bear the label.
std::vector<platform::NSIndexPath> rowsLabelled(platform::UIViewController& page, std::string_view label);

}  // namespace hosts
