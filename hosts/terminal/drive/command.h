// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "platform/foundation/result.h"
#include "platform/ui/index_path.h"
#include "platform/ui/view_controller.h"

namespace hosts::terminal {

/// Reads one line of commands: a JSON object, of which the fields that commands have are kept. They
/// hold scalars, or an object of two numbers; whatever else a line holds is read over, so that no line
/// costs memory out of proportion to its length. Null when the line is no JSON object.
nlohmann::json readCommand(const std::string& line);

/// Finds the row that a command names in its "row": by its label, or by {"section":S,"row":R}. A
/// problem, with a reason alone, when there is no such row or more than one.
platform::Result<platform::NSIndexPath> findRow(platform::UIViewController& page, const nlohmann::json& command);

}  // namespace hosts::terminal
