// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>

#include "hosts/session/page_snapshot.h"

namespace hosts::terminal {

/// A page as the automation interface tells it.
nlohmann::json pageJson(const PageSnapshot& page);

/// The page's view tree: its header view, and below it the cells with their content views, each at
/// its place in the page.
nlohmann::json viewTreeJson(platform::UIViewController& page, const PageSnapshot& snapshot);

}  // namespace hosts::terminal
