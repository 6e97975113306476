// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "platform/foundation/property_list.h"
#include "platform/foundation/value.h"

namespace platform::property_list {

/// The one key of a dictionary that stands for a keyed archiver's reference.
inline constexpr std::string_view uidKey = "CF$UID";

/// Nothing when the text (UTF-8) is no XML property list; the fault's offset is one of the text.
std::optional<Value> readXml(std::string_view text, PropertyListError& fault);

/// The object at the beginning of a text that is known to be well-formed from there on; what follows
/// the object does not matter.
std::optional<Value> readXmlObject(std::string_view text);

}  // namespace platform::property_list
