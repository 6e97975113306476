// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "platform/foundation/result.h"
#include "platform/foundation/value.h"

namespace hosts::terminal {

/// A value as JSON, for programs that read our answers. What JSON has no kind for is told in text:
/// data in base64, a date as the platform writes it, a real number that is not finite as "nan",
/// "+infinity" or "-infinity". Null for nothing.
nlohmann::json jsonOf(const std::optional<platform::Value>& value);

/// A value as JSON without loss. A problem, whose reason names what is in the way, when the value holds
/// what JSON has no kind for, or unfolds to more than 4 million values or 256 MB of text.
platform::Result<nlohmann::json> faithfulJsonOf(const platform::Value& value);

/// The value's kind as the automation interface names it; null for nothing.
nlohmann::json kindOf(const std::optional<platform::Value>& value);

/// JSON on one line, in UTF-8 whatever the strings hold, and without a character that could steer a
/// terminal.
std::string jsonLine(const nlohmann::json& json);

}  // namespace hosts::terminal
