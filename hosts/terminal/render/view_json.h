// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>

#include "hosts/session/page_snapshot.h"
#include "platform/ui/view_controller.h"

namespace hosts::terminal {

/// The page's view tree: its header view, and below it the cells with their content views, each at
/// its place in the page.
nlohmann::json viewTreeJson(platform::UIViewController& page, const PageSnapshot& snapshot);

}  // namespace hosts::terminal
