// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/value.h"

namespace hosts::terminal {

/// What of the value or of the keys in it a settings file cannot say so that every reader reads it back, as the object
/// of "it holds"; nothing where it can say it all.
std::optional<std::string> whatXmlCannotSay(const platform::Value& value);

/// The first character in the texts and keys of a value that was read from XML which XML cannot say.
std::optional<char32_t> characterXmlCannotSay(const platform::Value& value);
std::string characterName(char32_t character);  ///< "U+0001"

}  // namespace hosts::terminal
