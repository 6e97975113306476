// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>

#include "hosts/session/page_snapshot.h"

namespace hosts::terminal {

/// A page as the automation interface tells it.
nlohmann::json pageJson(const PageSnapshot& page);

}  // namespace hosts::terminal
