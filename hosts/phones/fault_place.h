// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/foundation/property_list.h"

namespace hosts {

/// Where a property list is wrong: "LINE:COLUMN" in XML, "offset N" in a binary one.
inline std::string faultPlace(const platform::PropertyListError& error) {
    if (error.line == 0) return "offset " + std::to_string(error.offset);
    return std::to_string(error.line) + ":" + std::to_string(error.column);
}

}  // namespace hosts
