// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace hosts::terminal {

/// Reads one line of commands: a JSON object with its scalars and, one level down, objects of scalars.
/// Whatever else a line holds, arrays and deeper objects, is read over and stands as null, so that no
/// line costs memory out of proportion to its length. Null when the line is no JSON object.
nlohmann::json readCommand(const std::string& line);

}  // namespace hosts::terminal
