// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace foreign {

/// What Python's plistlib reads in a property list, as JSON with sorted keys and null for the null
/// object; an error text when it reads nothing.
std::string jsonByPlistlib(std::string_view bytes);

/// What libplist's own program writes after reading the property list: "xml" or "json". Empty when
/// it reads nothing or does not know the format.
std::string convertedByPlistutil(std::string_view bytes, const std::string& format);

/// Whether this libplist reads a null object that another program wrote.
bool plistutilKnowsNull();

}  // namespace foreign
