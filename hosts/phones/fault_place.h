// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/property_list.h"

namespace hosts {

/// Where a property list is wrong: "LINE:COLUMN" in XML, "offset N" in a binary one.
inline std::string faultPlace(const platform::PropertyListError& error) {
    if (error.line == 0) return "offset " + std::to_string(error.offset);
    return std::to_string(error.line) + ":" + std::to_string(error.column);
}

/// Why these bytes are no property list that holds a dictionary; nothing where they are.
inline std::optional<std::string> dictionaryFault(std::string_view contents) {
    const platform::PropertyListReading reading = platform::readPropertyList(contents);
    if (!reading) return faultPlace(reading.error) + ": " + reading.error.reason;
    if (!reading.value->dictionary()) return "its root is no dictionary";
    return std::nullopt;
}

}  // namespace hosts
