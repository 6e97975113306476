// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "platform/ui/index_path.h"
#include "platform/ui/view_controller.h"

namespace hosts {

/// The places of the rows that bear the label, from the top. Where the page is a list, no cell is produced.
std::vector<platform::NSIndexPath> rowsLabelled(platform::UIViewController& page, std::string_view label);

}  // namespace hosts
