// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "platform/ui/index_path.h"
#include "platform/ui/view_controller.h"

namespace hosts::terminal {

/// Finds the row that a command names: by its label, or by {"section":S,"row":R}. Nothing, with the
/// reason in `error`, when there is no such row or more than one.
std::optional<platform::NSIndexPath> findRow(platform::UIViewController& page, const nlohmann::json& reference,
                                             std::string& error);

}  // namespace hosts::terminal
