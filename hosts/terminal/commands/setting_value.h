// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "platform/services/preference_access.h"

namespace hosts::terminal {

/// How a value on the command line is to be read.
enum class ValueType { boolean, integer, string };

/// "bool", "int" or "string"; nothing for any other name.
std::optional<ValueType> valueTypeNamed(const std::string& name);

/// Reads a value: true/false/yes/no/on/off/1/0 for a boolean, a decimal number of 64 bits with a sign
/// for an integer, the text itself for a string. Nothing when the text is not of that type.
std::optional<platform::Value> parseValue(const std::string& text, ValueType type);

/// What `parseValue` takes for the type, for a message.
const char* valueTypeHelp(ValueType type);

}  // namespace hosts::terminal
