// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/value.h"

namespace hosts::terminal {

/// A value as `get` prints it: a boolean as true or false, an integer in decimal, a string as it is,
/// anything else as an XML property list. Nothing when it holds what XML cannot say.
std::optional<std::string> valueText(const platform::Value& value);

/// A value on one short line, for lists and reports: containers by their size, long text cut, control
/// characters made visible.
std::string valueSummary(const std::optional<platform::Value>& value);

/// A decimal integer of any of a property list's ranges.
std::string integerText(const platform::Integer& number);

}  // namespace hosts::terminal
